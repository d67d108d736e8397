// Collapses a burst of calls for a key into one, made when the key has been quiet for an interval.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <utility>

#include "Platform/MainLoop.h"

namespace morvel {

/// Made and destroyed on the main thread, where its actions run; it may be called from any thread. Nothing runs after
/// destruction. An action may schedule, cancel and destroy the debouncer.
template <class Key>
class Debouncer {
public:
    /// `interval`: the quiet time after the last `schedule` of a key. The loop outlives the debouncer.
    Debouncer(Duration interval, MainLoop& mainLoop) : state_(std::make_shared<State>(interval, mainLoop)) {}
    Debouncer(const Debouncer&) = delete;
    Debouncer& operator=(const Debouncer&) = delete;
    ~Debouncer() { cancelAll(); }

    /// Only the action of the last call within the interval runs.
    void schedule(const Key& key, std::function<void()> action) {
        const auto state = state_;
        Entry replaced;
        uint64_t serial = 0;
        {
            const std::lock_guard lock(state->mutex);
            serial = ++state->lastSerial;
            replaced = std::exchange(state->entries[key], Entry{serial, std::move(action), {}});
        }
        state->retire(std::move(replaced));
        state->onMainThread([weak = std::weak_ptr(state), key, serial] {
            if (const auto armed = weak.lock()) armed->arm(key, serial);
        });
    }

    /// The pending action, if any, never runs.
    void cancel(const Key& key) {
        typename Entries::node_type cancelled;
        {
            const std::lock_guard lock(state_->mutex);
            cancelled = state_->entries.extract(key);
        }
        if (!cancelled.empty()) state_->retire(std::move(cancelled.mapped()));
    }

    void cancelAll() {
        Entries cancelled;
        {
            const std::lock_guard lock(state_->mutex);
            cancelled.swap(state_->entries);
        }
        for (auto& [key, entry] : cancelled) state_->retire(std::move(entry));
    }

private:
    struct Entry {
        uint64_t serial = 0;  // tells this call from later ones for the same key
        std::function<void()> action;
        Timer timer;  // empty until the main thread has armed it
    };
    using Entries = std::unordered_map<Key, Entry>;

    struct State : std::enable_shared_from_this<State> {
        State(Duration quiet, MainLoop& loop) : interval(quiet), mainLoop(loop) {}

        /// Timers live on the main thread alone.
        void onMainThread(std::function<void()> work) {
            if (std::this_thread::get_id() == mainThread) {
                work();
            } else {
                mainLoop.post(std::move(work));
            }
        }

        void arm(const Key& key, uint64_t serial) {
            Timer timer = mainLoop.after(interval, [weak = this->weak_from_this(), key, serial] {
                if (const auto state = weak.lock()) state->fire(key, serial);
            });
            const std::lock_guard lock(mutex);
            const auto found = entries.find(key);
            if (found != entries.end() && found->second.serial == serial) found->second.timer = std::move(timer);
        }

        void fire(const Key& key, uint64_t serial) {
            Entry due;
            {
                const std::lock_guard lock(mutex);
                const auto found = entries.find(key);
                if (found == entries.end() || found->second.serial != serial) return;
                due = std::move(found->second);
                entries.erase(found);
            }
            due.action();
        }

        /// Ends an entry outside the lock: what its action owns may call us back when it dies.
        void retire(Entry entry) {
            if (!entry.timer) return;
            onMainThread([ending = std::make_shared<Entry>(std::move(entry))] { ending->timer.reset(); });
        }

        const Duration interval;
        MainLoop& mainLoop;
        const std::thread::id mainThread = std::this_thread::get_id();
        std::mutex mutex;  // guards what follows
        uint64_t lastSerial = 0;
        Entries entries;
    };

    std::shared_ptr<State> state_;
};

}  // namespace morvel
