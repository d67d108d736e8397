// The parts of a window that are to be painted again, as a few rectangles.
#pragma once

#include <vector>

#include "Platform/Linux/UI/PixelRect.h"

namespace morvel::x11 {

/// Rectangles never overlap, so that nothing translucent is painted or sent twice. Neighbours whose common rectangle
/// is hardly larger than they are become one, and there are never more than `kMaxRects`: each costs a request.
class DamageRegion {
public:
    static constexpr size_t kMaxRects = 8;

    void add(PixelRect rect);
    void clear() { rects_.clear(); }
    bool isEmpty() const { return rects_.empty(); }
    const std::vector<PixelRect>& rects() const { return rects_; }
    /// The same region, as far as it lies inside `bounds`.
    DamageRegion clippedTo(const PixelRect& bounds) const;

private:
    void mergeCheapestPair();

    std::vector<PixelRect> rects_;
};

/// `rect` as stripes of whole rows from the top, none of more than `maxPixels` pixels unless a single row is.
std::vector<PixelRect> splitByRows(const PixelRect& rect, long maxPixels);

}  // namespace morvel::x11
