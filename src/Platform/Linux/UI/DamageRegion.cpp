#include "Platform/Linux/UI/DamageRegion.h"

#include <limits>

namespace morvel::x11 {

namespace {

// Painting a few pixels too many is cheaper than another picture and another request.
constexpr long kPixelsPerRequest = 512;

long wasteOfMerging(const PixelRect& a, const PixelRect& b) {
    return enclosing(a, b).area() - a.area() - b.area();
}

}  // namespace

void DamageRegion::add(PixelRect rect) {
    if (rect.isEmpty()) return;
    // A merge can make the result touch rectangles that were looked at before, hence from the start again.
    for (size_t i = 0; i < rects_.size();) {
        if (rects_[i].intersects(rect) || wasteOfMerging(rects_[i], rect) <= kPixelsPerRequest) {
            rect = enclosing(rect, rects_[i]);
            rects_.erase(rects_.begin() + static_cast<std::ptrdiff_t>(i));
            i = 0;
        } else {
            ++i;
        }
    }
    rects_.push_back(rect);
    if (rects_.size() > kMaxRects) mergeCheapestPair();
}

void DamageRegion::mergeCheapestPair() {
    size_t first = 0, second = 1;
    long least = std::numeric_limits<long>::max();
    for (size_t i = 0; i < rects_.size(); ++i)
        for (size_t j = i + 1; j < rects_.size(); ++j)
            if (const long waste = wasteOfMerging(rects_[i], rects_[j]); waste < least) {
                least = waste;
                first = i;
                second = j;
            }
    const PixelRect merged = enclosing(rects_[first], rects_[second]);
    rects_.erase(rects_.begin() + static_cast<std::ptrdiff_t>(second));
    rects_.erase(rects_.begin() + static_cast<std::ptrdiff_t>(first));
    add(merged);
}

DamageRegion DamageRegion::clippedTo(const PixelRect& bounds) const {
    DamageRegion clipped;
    for (const PixelRect& rect : rects_) clipped.add(intersection(rect, bounds));
    return clipped;
}

std::vector<PixelRect> splitByRows(const PixelRect& rect, long maxPixels) {
    std::vector<PixelRect> stripes;
    if (rect.isEmpty()) return stripes;
    const int rows = static_cast<int>(std::clamp<long>(maxPixels / rect.width, 1, rect.height));
    for (int y = rect.y; y < rect.maxY(); y += rows)
        stripes.push_back({rect.x, y, rect.width, std::min(rows, rect.maxY() - y)});
    return stripes;
}

}  // namespace morvel::x11
