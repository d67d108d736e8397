// A main loop whose time moves only when a test says so.
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <utility>

#include "Platform/MainLoop.h"

namespace morvel::sim {

class FakeMainLoop : public MainLoop {
public:
    Instant now() const override { return now_; }
    void post(std::function<void()> work) override { posted_.push_back(std::move(work)); }
    Timer after(Duration delay, std::function<void()> fire) override { return arm(delay, {}, std::move(fire)); }
    Timer every(Duration first, Duration period, std::function<void()> fire) override {
        return arm(first, period, std::move(fire));
    }

    /// Runs what is posted, and what that posts, without moving the clock.
    void settle() {
        while (!posted_.empty()) {
            const auto work = std::move(posted_.front());
            posted_.pop_front();
            work();
        }
    }

    /// Moves the clock; timers that fall due on the way (the end included) fire in the order of their times, each
    /// followed by what it posted.
    void advance(Duration by) {
        const Instant end = now_ + by;
        settle();
        while (!timers_->empty() && timers_->begin()->first.first <= end) {
            const auto [key, timer] = *timers_->begin();
            timers_->erase(timers_->begin());
            now_ = key.first;
            if (timer.period > Duration{}) timers_->emplace(Key{now_ + timer.period, key.second}, timer);
            timer.fire();
            settle();
        }
        now_ = end;
    }

    size_t armedTimers() const { return timers_->size(); }

private:
    using Key = std::pair<Instant, uint64_t>;  // due, and the order of arming among equals
    struct Armed {
        Duration period;
        std::function<void()> fire;
    };
    using Timers = std::map<Key, Armed>;

    Timer arm(Duration delay, Duration period, std::function<void()> fire) {
        const uint64_t serial = ++lastSerial_;
        timers_->emplace(Key{now_ + delay, serial}, Armed{period, std::move(fire)});
        return Timer([weak = std::weak_ptr<Timers>(timers_), serial] {
            if (const auto timers = weak.lock())
                std::erase_if(*timers, [serial](const auto& entry) { return entry.first.second == serial; });
        });
    }

    Instant now_{};
    uint64_t lastSerial_ = 0;
    std::deque<std::function<void()>> posted_;
    std::shared_ptr<Timers> timers_ = std::make_shared<Timers>();
};

}  // namespace morvel::sim
