// The queue of work, ordered by time and then by arrival.
#include "FakeDispatch.h"

#include <algorithm>
#include <filesystem>

#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Runtime.h"

namespace morvel::mac::checked {

FakeDispatch& FakeDispatch::process() {
    static FakeDispatch instance;
    return instance;
}

void FakeDispatch::enqueue(std::uint64_t when, dispatch_queue_t queue, void* context, dispatch_function_t work) {
    work_.push_back({when, ++order_, queue, context, work});
}

void FakeDispatch::enqueueCancelled(const Timer& timer) {
    enqueue(now_, timer.queue, timer.context, timer.cancelled);
    work_.back().isOfCancelled = true;
}

dispatch_queue_t FakeDispatch::makeQueue() {
    return queues_.emplace_back(std::make_unique<DispatchQueueTag>()).get();
}

dispatch_source_t FakeDispatch::makeTimer(dispatch_queue_t queue, std::optional<std::uint64_t> watched) {
    timers_.push_back(std::make_unique<Timer>(Timer{.queue = queue, .watched = watched}));
    return reinterpret_cast<dispatch_source_t>(timers_.back().get());
}

FakeDispatch::Timer* FakeDispatch::timer(const void* source) {
    const auto found = std::ranges::find(timers_, source, &std::unique_ptr<Timer>::get);
    if (found != timers_.end()) return found->get();
    runtime().faults().add(FaultKind::BadCall, "a dispatch function was given no living timer");
    return nullptr;
}

void FakeDispatch::schedule(Timer& timer) {
    ++timer.generation;
    if (timer.isSuspended || timer.isCancelled || timer.start == DISPATCH_TIME_FOREVER) return;
    work_.push_back({std::max(timer.start, now_), ++order_, timer.queue, nullptr, nullptr, &timer, timer.generation});
}

void FakeDispatch::folderChanged(const std::string& path) {
    for (const auto& timer : timers_) {
        std::error_code error;
        if (!timer->watched) continue;
        const auto link = "/proc/self/fd/" + std::to_string(*timer->watched);
        if (std::filesystem::read_symlink(link, error) != path) continue;
        timer->start = now_;
        schedule(*timer);
        timer->start = DISPATCH_TIME_FOREVER;
    }
}

void FakeDispatch::release(const void* object) {
    if (std::erase_if(queues_, [&](const auto& queue) { return queue.get() == object; })) return;
    const Timer* const found = timer(object);
    if (!found) return;
    // The system's library crashes here.
    if (found->isSuspended) runtime().faults().add(FaultKind::BadCall, "a timer was released while suspended");
    // A later timer may get the same address.
    std::erase_if(work_, [&](const Work& work) { return work.source == object; });
    std::erase_if(timers_, [&](const auto& timer) { return timer.get() == object; });
}

void FakeDispatch::fire(const Work& work) {
    const auto found = std::ranges::find(timers_, work.source, &std::unique_ptr<Timer>::get);
    if (found == timers_.end() || (*found)->generation != work.generation) return;
    Timer& timer = **found;
    if (timer.interval > 0 && timer.interval != DISPATCH_TIME_FOREVER) {
        timer.start = work.when + timer.interval;
        schedule(timer);
    }
    if (timer.handler) timer.handler(timer.context);  // may cancel and release the timer
}

void FakeDispatch::run(const Work& work) {
    const objc::AutoreleasePool pool;
    isOnMain_ = work.queue == &_dispatch_main_q;
    if (work.source) {
        fire(work);
    } else {
        work.function(work.context);
    }
    isOnMain_ = true;
}

void FakeDispatch::runFor(std::chrono::nanoseconds duration) {
    const std::uint64_t end = now_ + static_cast<std::uint64_t>(duration.count());
    while (true) {
        const auto next = std::ranges::min_element(work_, [](const Work& a, const Work& b) {
            return std::pair(a.when, a.order) < std::pair(b.when, b.order);
        });
        if (next == work_.end() || next->when > end) break;
        const Work work = *next;
        work_.erase(next);
        now_ = std::max(now_, work.when);
        run(work);
    }
    now_ = end;
}

void FakeDispatch::raise(int signal) {
    std::vector<Timer*> watching;
    for (const auto& timer : timers_)
        if (timer->signal == signal && !timer->isSuspended && !timer->isCancelled) watching.push_back(timer.get());
    for (const Timer* timer : watching) timer->handler(timer->context);
}

void FakeDispatch::finish() {
    for (const Work& work : std::vector<Work>(work_.begin(), work_.end()))
        if (work.isOfCancelled) run(work);
    const auto reportLeft = [](std::size_t count, const char* what) {
        for (; count > 0; --count) runtime().faults().add(FaultKind::Leak, std::string(what) + " was never released");
    };
    reportLeft(timers_.size(), "a dispatch timer");
    reportLeft(queues_.size(), "a dispatch queue");
    *this = FakeDispatch();
}

}  // namespace morvel::mac::checked

namespace morvel::mac {

using checked::dispatch;

std::uint64_t checkedUptime() {
    return static_cast<std::uint64_t>(dispatch().now().count());
}

extern "C" {
DispatchQueueTag _dispatch_main_q{true};
extern const DispatchSourceTypeTag _dispatch_source_type_timer{};
extern const DispatchSourceTypeTag _dispatch_source_type_signal{};
extern const DispatchSourceTypeTag _dispatch_source_type_vnode{};

void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work) {
    dispatch().enqueue(dispatch().resolve(DISPATCH_TIME_NOW), queue, context, work);
}
dispatch_time_t dispatch_time(dispatch_time_t when, std::int64_t nanoseconds) {
    if (when == DISPATCH_TIME_FOREVER) return when;
    return dispatch().resolve(when) + static_cast<std::uint64_t>(nanoseconds);
}
dispatch_queue_attr_t dispatch_queue_attr_make_with_qos_class(dispatch_queue_attr_t attributes, std::uint32_t,
                                                              std::int32_t) {
    return attributes;
}
dispatch_queue_t dispatch_queue_create(const char*, dispatch_queue_attr_t) {
    return dispatch().makeQueue();
}
dispatch_source_t dispatch_source_create(dispatch_source_type_t type, std::uint64_t handle, std::uint64_t,
                                         dispatch_queue_t queue) {
    const bool isFile = type == &_dispatch_source_type_vnode;
    const dispatch_source_t source = dispatch().makeTimer(queue, isFile ? std::optional(handle) : std::nullopt);
    if (type == &_dispatch_source_type_signal) dispatch().timer(source)->signal = static_cast<int>(handle);
    return source;
}
void dispatch_source_set_timer(dispatch_source_t source, dispatch_time_t start, std::uint64_t intervalNanoseconds,
                               std::uint64_t) {
    if (auto* const timer = dispatch().timer(source)) {
        timer->start = start == DISPATCH_TIME_FOREVER ? start : dispatch().resolve(start);
        timer->interval = intervalNanoseconds;
        dispatch().schedule(*timer);
    }
}
void dispatch_source_set_event_handler_f(dispatch_source_t source, dispatch_function_t handler) {
    if (auto* const timer = dispatch().timer(source)) timer->handler = handler;
}
void dispatch_source_set_cancel_handler_f(dispatch_source_t source, dispatch_function_t handler) {
    if (auto* const timer = dispatch().timer(source)) timer->cancelled = handler;
}
void dispatch_source_cancel(dispatch_source_t source) {
    auto* const timer = dispatch().timer(source);
    if (!timer || timer->isCancelled) return;
    timer->isCancelled = true;
    ++timer->generation;
    if (timer->cancelled) dispatch().enqueueCancelled(*timer);
}
void dispatch_set_context(dispatch_object_t object, void* context) {
    if (auto* const timer = dispatch().timer(object)) timer->context = context;
}
void dispatch_resume(dispatch_object_t object) {
    if (auto* const timer = dispatch().timer(object)) {
        timer->isSuspended = false;
        dispatch().schedule(*timer);
    }
}
void dispatch_release(dispatch_object_t object) {
    dispatch().release(object);
}
}

}  // namespace morvel::mac
