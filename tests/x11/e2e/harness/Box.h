// A rectangle of whole pixels of the X screen: origin at the root's top left corner, y grows downwards.
#pragma once

#include <algorithm>
#include <ostream>

namespace morvel::e2e {

struct Spot {
    int x = 0;
    int y = 0;
    bool operator==(const Spot&) const = default;
};

struct Box {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int right() const { return x + width; }
    int bottom() const { return y + height; }
    Spot center() const { return {x + width / 2, y + height / 2}; }
    bool isEmpty() const { return width <= 0 || height <= 0; }
    bool contains(const Spot& p) const { return p.x >= x && p.x < right() && p.y >= y && p.y < bottom(); }
    bool contains(const Box& b) const { return b.x >= x && b.y >= y && b.right() <= right() && b.bottom() <= bottom(); }
    /// The same centre, `by` pixels less on each side; may become empty.
    Box inset(int by) const { return {x + by, y + by, width - 2 * by, height - 2 * by}; }
    Box joined(const Box& b) const {
        if (isEmpty()) return b;
        if (b.isEmpty()) return *this;
        const int left = std::min(x, b.x);
        const int top = std::min(y, b.y);
        return {left, top, std::max(right(), b.right()) - left, std::max(bottom(), b.bottom()) - top};
    }
    bool operator==(const Box&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Box& b) {
    return out << b.width << "x" << b.height << "+" << b.x << "+" << b.y;
}

}  // namespace morvel::e2e
