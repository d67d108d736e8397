// Whole pixels of a window, from its top left corner: what is painted and sent to the server.
#pragma once

#include <algorithm>
#include <cmath>

#include "Util/Geometry.h"

namespace morvel::x11 {

struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int maxX() const { return x + width; }
    int maxY() const { return y + height; }
    long area() const { return isEmpty() ? 0 : static_cast<long>(width) * height; }
    bool isEmpty() const { return width <= 0 || height <= 0; }
    bool intersects(const PixelRect& r) const {
        return x < r.maxX() && r.x < maxX() && y < r.maxY() && r.y < maxY() && !isEmpty() && !r.isEmpty();
    }
    /// Whether some of what is shown there lies in this rectangle.
    template <class Space>
    bool touches(const Rect<Space>& r) const {
        return !r.isEmpty() && r.minX() < maxX() && x < r.maxX() && r.minY() < maxY() && y < r.maxY();
    }
    bool operator==(const PixelRect&) const = default;
};

inline PixelRect intersection(const PixelRect& a, const PixelRect& b) {
    const int x = std::max(a.x, b.x), y = std::max(a.y, b.y);
    const int width = std::min(a.maxX(), b.maxX()) - x, height = std::min(a.maxY(), b.maxY()) - y;
    return width > 0 && height > 0 ? PixelRect{x, y, width, height} : PixelRect{};
}

/// The smallest rectangle around both; an empty one adds nothing.
inline PixelRect enclosing(const PixelRect& a, const PixelRect& b) {
    if (a.isEmpty()) return b;
    if (b.isEmpty()) return a;
    const int x = std::min(a.x, b.x), y = std::min(a.y, b.y);
    return {x, y, std::max(a.maxX(), b.maxX()) - x, std::max(a.maxY(), b.maxY()) - y};
}

/// Every pixel that the rectangle touches. Absurd numbers are bounded to what the protocol can say.
template <class Space>
PixelRect pixelsTouched(const Rect<Space>& r) {
    const auto bounded = [](double v) { return static_cast<int>(std::clamp(v, -32768.0, 32767.0)); };
    const int x = bounded(std::floor(r.minX())), y = bounded(std::floor(r.minY()));
    return {x, y, bounded(std::ceil(r.maxX())) - x, bounded(std::ceil(r.maxY())) - y};
}

}  // namespace morvel::x11
