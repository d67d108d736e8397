// The program's one event loop: the clock, work for later turns, and timers.
#pragma once

#include <chrono>
#include <functional>

#include "Util/Subscription.h"

namespace morvel {

using Duration = std::chrono::nanoseconds;

/// A reading of the main loop's clock, which never goes back and whose zero means nothing.
using Instant = std::chrono::time_point<class MainLoopClock, Duration>;

/// A running timer; destroying it cancels it. What it fires may do so, and lives until it has returned.
using Timer = Subscription;

class MainLoop {
public:
    virtual ~MainLoop() = default;

    /// Main thread only.
    virtual Instant now() const = 0;

    /// Runs `work` on the main thread in a later turn, after what was posted before it. May be called from any thread.
    virtual void post(std::function<void()> work) = 0;

    /// Runs `fire` once, `delay` from now, never inside this call. Main thread only.
    [[nodiscard]] virtual Timer after(Duration delay, std::function<void()> fire) = 0;

    /// Runs `fire` first after `first` and then every `period`, until the token dies. Main thread only.
    [[nodiscard]] virtual Timer every(Duration first, Duration period, std::function<void()> fire) = 0;
};

}  // namespace morvel
