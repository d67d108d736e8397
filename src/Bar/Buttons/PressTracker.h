// Tells a click from a drag: a press that moves too far is a drag, and no click follows it.
#pragma once

#include <optional>

#include "Util/Geometry.h"

namespace morvel {

enum class PressOutcome { Nothing, DragStart, Click };

/// Of one button. Locations are in the space of the button's window, so that a button that moves under a resting
/// pointer does not take that for a drag.
class PressTracker {
public:
    void down(Point<ViewSpace> location) { pressed_ = location; }
    PressOutcome drag(Point<ViewSpace> location);
    PressOutcome up();

    /// Whether a press has become neither a click nor a drag yet.
    bool isPending() const { return pressed_.has_value(); }

private:
    std::optional<Point<ViewSpace>> pressed_;
};

}  // namespace morvel
