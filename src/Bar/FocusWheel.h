// Turns the wheel over the running strip into steps from window to window.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>

#include "Platform/MainLoop.h"

namespace morvel {

/// A flick of a touchpad sends many small turns within moments; at most one step comes of each interval, and what is
/// turned while no step may come is forgotten, so that nothing goes on moving after the hand has stopped.
class FocusWheel {
public:
    static constexpr Duration kInterval = std::chrono::milliseconds(200);

    /// -1 towards the leading end, 1 towards the trailing one, 0 for not yet.
    int turned(double notches, Instant now);

    /// The place that is one step from the focused one among `count`; without a focused one it is the end that the
    /// step comes from. Nothing beyond the ends.
    static std::optional<size_t> next(std::optional<size_t> focused, size_t count, int step);

private:
    double turned_ = 0;  // notches since the last step
    std::optional<Instant> lastStep_;
};

}  // namespace morvel
