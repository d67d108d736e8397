// Repeats a failing action, one job per key, with a growing delay between the calls.
#pragma once

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <unordered_map>
#include <utility>

#include "Platform/MainLoop.h"

namespace morvel {

/// 0.5 s after the first call, doubled after each further one, never more than 8 s.
inline Duration doublingBackoff(int callsMade) {
    constexpr double kBase = 0.25, kCap = 8;
    const double seconds = std::min(std::ldexp(kBase, callsMade), kCap);
    return std::chrono::duration_cast<Duration>(std::chrono::duration<double>(seconds));
}

/// Main thread only. Nothing is called after destruction. An attempt may start or cancel any job, its own included,
/// and may destroy the scheduler; its own result counts only as long as its job is still the key's job.
template <class Key>
class RetryScheduler {
public:
    using Attempt = std::function<bool()>;         ///< true: done
    using Backoff = std::function<Duration(int)>;  ///< the delay before the next call, by the number of calls made

    /// The loop outlives the scheduler.
    explicit RetryScheduler(MainLoop& mainLoop) : state_(std::make_shared<State>(mainLoop)) {}
    RetryScheduler(const RetryScheduler&) = delete;
    RetryScheduler& operator=(const RetryScheduler&) = delete;

    /// Replaces the key's job and calls `attempt` for the first time at once, inside this call. After `maxAttempts`
    /// failures the job is dropped silently.
    void start(const Key& key, int maxAttempts, Backoff backoff, Attempt attempt) {
        const auto state = state_;  // outlives us if the attempt destroys us
        cancel(key);
        state->jobs[key] = std::make_shared<Job>(std::move(attempt), std::move(backoff), maxAttempts);
        state->runAttempt(key);
    }

    void cancel(const Key& key) {
        // What the attempt owns may call us back when it dies: it dies after the table is sound.
        const auto dying = state_->jobs.extract(key);
        if (!dying.empty()) dying.mapped()->timer.reset();
    }

    bool isPending(const Key& key) const { return state_->jobs.contains(key); }

private:
    struct Job {
        Job(Attempt a, Backoff b, int max) : attempt(std::move(a)), backoff(std::move(b)), maxAttempts(max) {}
        Attempt attempt;
        Backoff backoff;
        int maxAttempts;
        int callsMade = 0;
        Timer timer;
    };

    struct State : std::enable_shared_from_this<State> {
        explicit State(MainLoop& loop) : mainLoop(loop) {}

        void runAttempt(Key key) {
            const auto found = jobs.find(key);
            if (found == jobs.end()) return;
            const std::shared_ptr<Job> job = found->second;
            ++job->callsMade;
            const bool done = job->attempt();
            const auto current = jobs.find(key);
            if (current == jobs.end() || current->second != job) return;  // cancelled or replaced by the attempt
            if (done || job->callsMade >= job->maxAttempts) {
                jobs.erase(current);
                return;
            }
            job->timer = mainLoop.after(job->backoff(job->callsMade), [weak = this->weak_from_this(), key] {
                if (const auto state = weak.lock()) state->runAttempt(key);
            });
        }

        MainLoop& mainLoop;
        std::unordered_map<Key, std::shared_ptr<Job>> jobs;
    };

    std::shared_ptr<State> state_;
};

}  // namespace morvel
