#include "Bar/Buttons/PressTracker.h"

#include <cmath>

namespace morvel {

namespace {

/// A hand wobbles while it clicks; exactly this far is still a click.
constexpr double kDragThreshold = 4;

}  // namespace

PressOutcome PressTracker::drag(Point<ViewSpace> location) {
    if (!pressed_ || std::hypot(location.x - pressed_->x, location.y - pressed_->y) <= kDragThreshold)
        return PressOutcome::Nothing;
    pressed_.reset();
    return PressOutcome::DragStart;
}

PressOutcome PressTracker::up() {
    if (!pressed_) return PressOutcome::Nothing;
    pressed_.reset();
    return PressOutcome::Click;
}

}  // namespace morvel
