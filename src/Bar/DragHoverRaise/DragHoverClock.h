// The timers of drags that rest on a button, so that a test can drive them.
#pragma once

#include <chrono>
#include <functional>

#include "Util/Identity.h"

namespace morvel {

/// Main thread only.
class DragHoverClock {
public:
    using Seconds = std::chrono::duration<double>;
    /// Names one scheduled action; never used again.
    using Token = StrongValue<struct DragHoverTokenTag, uint64_t>;

    virtual ~DragHoverClock() = default;
    /// Runs the action once, never inside this call.
    virtual Token schedule(Seconds after, std::function<void()> action) = 0;
    /// A token whose action has run, or that was never given out, is ignored.
    virtual void cancel(Token token) = 0;
};

}  // namespace morvel
