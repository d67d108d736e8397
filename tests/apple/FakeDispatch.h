// Dispatch queues and timers under a clock that moves only when a test says so. Work of every queue runs on the
// caller's thread, in order of its time; `onMain` says for whom.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Mac/apple/Dispatch.h"

namespace morvel::mac {

struct DispatchQueueTag {
    bool isMain = false;
};
struct DispatchSourceTypeTag {};

}  // namespace morvel::mac

namespace morvel::mac::checked {

class FakeDispatch {
public:
    static FakeDispatch& process();

    /// Runs everything that is due now, and what that enqueues for now.
    void runPending() { runFor(std::chrono::nanoseconds{0}); }
    /// Moves the clock, running what falls due on the way, each inside an autorelease pool.
    void runFor(std::chrono::nanoseconds duration);
    std::chrono::nanoseconds now() const { return std::chrono::nanoseconds(now_); }
    bool isOnMain() const { return isOnMain_; }
    /// Something was added to the folder or taken away: whoever watches it is told in a later piece of work.
    void folderChanged(const std::string& path);
    /// How many pieces of work and timers wait.
    std::size_t waiting() const { return work_.size(); }

    /// Calls whoever watches for the signal.
    void raise(int signal);

    /// Ends a test: lets cancelled sources give up what they hold, drops what else waits, reports queues and timers
    /// that were never released, sets the clock back.
    void finish();

    // For the C functions.
    struct Timer {
        dispatch_queue_t queue = nullptr;
        dispatch_function_t handler = nullptr;
        dispatch_function_t cancelled = nullptr;
        void* context = nullptr;
        std::uint64_t interval = 0;
        std::uint64_t start = DISPATCH_TIME_FOREVER;
        std::optional<std::uint64_t> watched = {};  // the descriptor, of what is no timer
        bool isSuspended = true;
        bool isCancelled = false;
        std::uint64_t generation = 0;  // a firing that was scheduled under an older one is void
        int signal = 0;                // that it watches for, instead of a time
    };
    void enqueue(std::uint64_t when, dispatch_queue_t queue, void* context, dispatch_function_t work);
    void enqueueCancelled(const Timer& timer);
    std::uint64_t resolve(dispatch_time_t when) const { return when == DISPATCH_TIME_NOW ? now_ : when; }
    dispatch_queue_t makeQueue();
    dispatch_source_t makeTimer(dispatch_queue_t queue, std::optional<std::uint64_t> watched = {});
    /// Null, with a fault, for anything that is no living timer.
    Timer* timer(const void* source);
    void schedule(Timer& timer);
    void release(const void* object);

private:
    struct Work {
        std::uint64_t when;
        std::uint64_t order;
        dispatch_queue_t queue;
        void* context;
        dispatch_function_t function;
        const void* source = nullptr;
        std::uint64_t generation = 0;
        bool isOfCancelled = false;
    };
    void run(const Work& work);
    void fire(const Work& work);

    // Times are nanoseconds since boot. Not zero at first, as zero means "now" to dispatch_time.
    static constexpr std::uint64_t kBoot = 1'000'000'000;
    std::uint64_t now_ = kBoot;
    std::uint64_t order_ = 0;
    bool isOnMain_ = true;
    std::vector<Work> work_;
    std::vector<std::unique_ptr<Timer>> timers_;
    std::vector<std::unique_ptr<DispatchQueueTag>> queues_;
};

inline FakeDispatch& dispatch() {
    return FakeDispatch::process();
}

}  // namespace morvel::mac::checked
