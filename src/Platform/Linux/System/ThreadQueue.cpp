#include "Platform/Linux/System/ThreadQueue.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace morvel::x11 {

/// Shared with the thread, which may outlive the queue: nobody waits for a piece that hangs.
class ThreadQueue::State : public std::enable_shared_from_this<State> {
public:
    void add(std::function<void()> work) {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(std::move(work));
        if (std::exchange(hasThread_, true)) return changed_.notify_one();
        std::thread([self = shared_from_this()] { self->serve(); }).detach();
    }

    void end() {
        std::deque<std::function<void()>> dropped;  // outlives the lock: letting go of what they own may do anything
        const std::lock_guard lock(mutex_);
        hasEnded_ = true;
        dropped.swap(waiting_);
        changed_.notify_one();
    }

private:
    void serve() {
        while (const std::function<void()> work = next()) work();
    }

    /// Empty once the queue is gone.
    std::function<void()> next() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return hasEnded_ || !waiting_.empty(); });
        if (hasEnded_) return {};
        std::function<void()> work = std::move(waiting_.front());
        waiting_.pop_front();
        return work;
    }

    std::mutex mutex_;  // guards all of these
    std::condition_variable changed_;
    std::deque<std::function<void()>> waiting_;
    bool hasThread_ = false;
    bool hasEnded_ = false;
};

ThreadQueue::ThreadQueue() : state_(std::make_shared<State>()) {}

ThreadQueue::~ThreadQueue() {
    state_->end();
}

void ThreadQueue::run(std::function<void()> work) {
    state_->add(std::move(work));
}

}  // namespace morvel::x11
