// Points, sizes and rectangles that carry their coordinate space in their type, so that a frame told by the
// accessibility interface cannot be mistaken for one told by the screen list. All lengths are in points.
#pragma once

namespace morvel {

/// Origin at the top left corner of the main display, y grows downwards: what accessibility attributes speak.
struct AXSpace {};
/// Origin at the bottom left corner of the main display, y grows upwards: what screens and panels speak.
struct ScreenSpace {};
/// Origin at the top left corner of a view (for a view's frame: of its parent), y grows downwards.
struct ViewSpace {};

struct Size {
    double width = 0;
    double height = 0;
    bool operator==(const Size&) const = default;
};

template <class Space>
struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point&) const = default;
};

/// A rectangle by its origin (the corner with the least x and y) and size.
template <class Space>
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double minX() const { return x; }
    double minY() const { return y; }
    double midX() const { return x + width / 2; }
    double midY() const { return y + height / 2; }
    double maxX() const { return x + width; }
    double maxY() const { return y + height; }
    Point<Space> origin() const { return {x, y}; }
    Point<Space> center() const { return {midX(), midY()}; }
    Size size() const { return {width, height}; }
    bool isEmpty() const { return !(width > 0 && height > 0); }

    /// The edges with the least x and y belong to the rectangle, the far ones do not.
    bool contains(Point<Space> p) const { return p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY(); }

    bool operator==(const Rect&) const = default;
};

/// Both conversions mirror about the main display's height, so one is the other's inverse.
inline Rect<ScreenSpace> toScreen(const Rect<AXSpace>& r, double mainScreenHeight) {
    return {r.x, mainScreenHeight - r.y - r.height, r.width, r.height};
}
inline Rect<AXSpace> toAX(const Rect<ScreenSpace>& r, double mainScreenHeight) {
    return {r.x, mainScreenHeight - r.y - r.height, r.width, r.height};
}
inline Point<ScreenSpace> toScreen(Point<AXSpace> p, double mainScreenHeight) {
    return {p.x, mainScreenHeight - p.y};
}

/// The same numbers under another space's name, unconverted. For the one place that compares them so on purpose.
template <class To, class From>
Point<To> reinterpretUnconverted(Point<From> p) {
    return {p.x, p.y};
}

}  // namespace morvel
