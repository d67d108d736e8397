// The connected displays.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Util/Geometry.h"
#include "Util/Identity.h"
#include "Util/Subscription.h"

namespace morvel {

/// A connected display as the system describes it at one moment.
struct Screen {
    std::optional<DisplayID> displayID;  ///< absent for a moment while displays are reconfigured
    std::string name;                    ///< for menus, in the person's language
    Rect<ScreenSpace> frame;
    Rect<ScreenSpace> visibleFrame;  ///< `frame` without the system's menu bar and what else reserves room

    /// What is left of the display's top on both sides of a camera housing, where it has one. Screen coordinates.
    std::optional<Rect<ScreenSpace>> auxiliaryTopLeft = {};
    std::optional<Rect<ScreenSpace>> auxiliaryTopRight = {};

    bool operator==(const Screen&) const = default;
};

/// Main thread only.
class Screens {
public:
    virtual ~Screens() = default;

    /// In the system's order. The first one's top left corner is the origin of AXSpace and its height converts
    /// between the spaces. May be empty for a moment while displays are reconfigured.
    virtual std::vector<Screen> screens() = 0;
    virtual DisplayID mainDisplay() = 0;
    /// The display's persistent identifier, as the window server's display dictionaries name it.
    virtual std::optional<std::string> uuidString(DisplayID display) = 0;
    /// The thickness of the system's status bar in points; 0 where the system has no menu bar at all.
    virtual double statusBarThickness() = 0;

    /// After any change of number, frames or order. Several may come for one change.
    [[nodiscard]] virtual Subscription observeChanges(std::function<void()> changed) = 0;
};

}  // namespace morvel
