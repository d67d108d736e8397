// A monitor as RandR tells it, and what is decided from the list of them without asking anybody.
#pragma once

#include <string>
#include <vector>

#include "Platform/Linux/Screens/RootGeometry.h"

namespace morvel::x11 {

struct Monitor {
    std::string name;  ///< the output's or the one a person gave it; the monitor's identity
    bool isPrimary = false;
    Rect<RootSpace> frame;

    bool operator==(const Monitor&) const = default;
};

/// What a window of another program reserves at the edges of the root window, as pixels from the edge and the stretch
/// of the edge that it applies to.
struct Strut {
    double left = 0, right = 0, top = 0, bottom = 0;
    double leftStart = 0, leftEnd = 0, rightStart = 0, rightEnd = 0;
    double topStart = 0, topEnd = 0, bottomStart = 0, bottomEnd = 0;

    bool operator==(const Strut&) const = default;
};

/// The primary monitor first, the others as they came; monitors without extent and mirrors of an earlier one left out.
std::vector<Monitor> mainFirst(std::vector<Monitor> monitors);

/// `monitor` without what the struts reserve on it. A strut that lies at an edge inside the root window, between two
/// monitors, is measured from the root window's edge, so it counts where it reaches into the monitor.
Rect<RootSpace> withoutStruts(const Rect<RootSpace>& monitor, const Rect<RootSpace>& root,
                              const std::vector<Strut>& struts);

}  // namespace morvel::x11
