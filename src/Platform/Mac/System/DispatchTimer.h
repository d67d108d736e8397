// One timer on the main queue, which ends with its token.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "Platform/Mac/apple/Dispatch.h"
#include "Platform/MainLoop.h"

namespace morvel::mac {

/// Main thread only. The source refers to this object without owning it: the token does, and cancels the source on the
/// thread that it fires on, after which it does not fire.
class DispatchTimer : public std::enable_shared_from_this<DispatchTimer> {
public:
    /// Fires after `first` and then, if there is a period, every period. A delay below zero is zero.
    static Timer start(Duration first, std::optional<Duration> period, std::function<void()> fire);

    ~DispatchTimer() { cancel(); }
    DispatchTimer(const DispatchTimer&) = delete;
    DispatchTimer& operator=(const DispatchTimer&) = delete;

private:
    DispatchTimer(bool repeats, std::function<void()> fire) : repeats_(repeats), fire_(std::move(fire)) {}
    void arm(Duration first, Duration period);
    void cancel();
    static void fired(void* context);

    const bool repeats_;
    const std::function<void()> fire_;
    dispatch_source_t source_ = nullptr;  // null before it is armed and once it is cancelled
};

}  // namespace morvel::mac
