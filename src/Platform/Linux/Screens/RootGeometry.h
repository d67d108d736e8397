// The X server's coordinates: pixels from the root window's top left corner, y down. One pixel is one point.
#pragma once

#include "Util/Geometry.h"

namespace morvel::x11 {

struct RootSpace {};

/// Where the main display lies on the root window. It is the origin of AXSpace, and its height joins AXSpace and
/// ScreenSpace, so everything moves against the root window when another display becomes the main one.
struct MainDisplayFrame {
    Rect<RootSpace> frame;

    Rect<AXSpace> toAX(const Rect<RootSpace>& r) const { return {r.x - frame.x, r.y - frame.y, r.width, r.height}; }
    Rect<RootSpace> toRoot(const Rect<AXSpace>& r) const { return {r.x + frame.x, r.y + frame.y, r.width, r.height}; }
    Point<RootSpace> toRoot(Point<AXSpace> p) const { return {p.x + frame.x, p.y + frame.y}; }

    Rect<ScreenSpace> toScreen(const Rect<RootSpace>& r) const { return morvel::toScreen(toAX(r), frame.height); }
    Rect<RootSpace> toRoot(const Rect<ScreenSpace>& r) const { return toRoot(morvel::toAX(r, frame.height)); }

    bool operator==(const MainDisplayFrame&) const = default;
};

}  // namespace morvel::x11
