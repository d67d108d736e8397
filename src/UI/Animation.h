// Something that changes over a short while, a step for each frame, with no timer before or after.
#pragma once

#include <functional>

#include "Platform/MainLoop.h"

namespace morvel::ui {

/// Main thread only.
class Animation {
public:
    /// The loop outlives the animation.
    explicit Animation(MainLoop& mainLoop) : mainLoop_(mainLoop) {}

    /// Calls `step` for each frame with the eased progress, more than 0, at last exactly 1. Replaces a running one,
    /// which stays where it is. Without a duration the only step comes at once.
    void start(Duration duration, std::function<void(double)> step);
    void cancel() { frames_.reset(); }
    bool isRunning() const { return static_cast<bool>(frames_); }

private:
    void frame();

    MainLoop& mainLoop_;
    Instant began_{};
    Duration duration_{};
    std::function<void(double)> step_;
    Timer frames_;  // last, so that it is destroyed first
};

}  // namespace morvel::ui
