// Arms a dispatch timer source, and ends it from its token or after its one firing.
#include "Platform/Mac/System/DispatchTimer.h"

#include <algorithm>
#include <utility>

#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Platform/Mac/objc/Guard.h"

namespace morvel::mac {

namespace {

/// How late the system may fire so that it can wake the processor once for several timers: a twentieth of the wait,
/// and never so much that a person sees it.
Duration leewayOf(Duration wait) {
    constexpr Duration kVisible = std::chrono::milliseconds(100);
    return std::min(wait / 20, kVisible);
}

}  // namespace

Timer DispatchTimer::start(Duration first, std::optional<Duration> period, std::function<void()> fire) {
    const std::shared_ptr<DispatchTimer> timer(new DispatchTimer(period.has_value(), std::move(fire)));
    timer->arm(std::max(first, Duration::zero()), period.value_or(Duration::zero()));
    return Timer([timer] { timer->cancel(); });
}

void DispatchTimer::arm(Duration first, Duration period) {
    source_ = dispatch_source_create(&_dispatch_source_type_timer, 0, 0, &_dispatch_main_q);
    if (!source_) return;
    dispatch_set_context(dispatchObject(source_), this);
    dispatch_source_set_event_handler_f(source_, &fired);
    // An interval of zero would fire without pause.
    const Duration interval = std::max(period, Duration(1));
    dispatch_source_set_timer(source_, dispatch_time(DISPATCH_TIME_NOW, first.count()),
                              repeats_ ? static_cast<std::uint64_t>(interval.count()) : DISPATCH_TIME_FOREVER,
                              static_cast<std::uint64_t>(leewayOf(repeats_ ? period : first).count()));
    dispatch_resume(dispatchObject(source_));
}

void DispatchTimer::cancel() {
    const dispatch_source_t source = std::exchange(source_, nullptr);
    if (!source) return;
    dispatch_source_cancel(source);
    dispatch_release(dispatchObject(source));
}

void DispatchTimer::fired(void* context) {
    const objc::AutoreleasePool pool;
    const auto timer = static_cast<DispatchTimer*>(context)->shared_from_this();  // firing may end the token
    if (!timer->repeats_) timer->cancel();
    objc::guarded("timer", timer->fire_);
}

}  // namespace morvel::mac
