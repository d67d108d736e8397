// Points, sizes and rectangles as the system passes them. Which coordinate space a value is in depends on the call; the
// host turns them into the core's typed rectangles (Util/Geometry.h) at its seams.
#pragma once

#include "Platform/Mac/objc/Encoding.h"

namespace morvel::mac {

struct CGPoint {
    double x = 0;
    double y = 0;
    friend bool operator==(const CGPoint&, const CGPoint&) = default;
};
struct CGSize {
    double width = 0;
    double height = 0;
    friend bool operator==(const CGSize&, const CGSize&) = default;
};
struct CGRect {
    CGPoint origin;
    CGSize size;
    friend bool operator==(const CGRect&, const CGRect&) = default;
};
/// With the lower edges and without the upper ones, as the system's views have their bounds.
inline bool contains(const CGRect& rect, const CGPoint& point) {
    const double x = point.x - rect.origin.x, y = point.y - rect.origin.y;
    return x >= 0 && x < rect.size.width && y >= 0 && y < rect.size.height;
}
struct NSEdgeInsets {
    double top = 0;
    double left = 0;
    double bottom = 0;
    double right = 0;
};

}  // namespace morvel::mac

namespace morvel::mac::objc {

template <>
struct Encode<CGPoint> {
    static constexpr FixedString value{"{CGPoint=dd}"};
};
template <>
struct Encode<CGSize> {
    static constexpr FixedString value{"{CGSize=dd}"};
};
template <>
struct Encode<CGRect> {
    static constexpr FixedString value{"{CGRect={CGPoint=dd}{CGSize=dd}}"};
};
template <>
struct Encode<NSEdgeInsets> {
    static constexpr FixedString value{"{NSEdgeInsets=dddd}"};
};

}  // namespace morvel::mac::objc
