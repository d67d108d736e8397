// A list of listeners that are all called with the same arguments. Main thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "Util/Subscription.h"

namespace morvel {

/// While it emits, listeners may be added (they are first called at the next emission), removed (they are not
/// called any more), or the signal itself destroyed.
template <class... Args>
class Signal {
public:
    Signal() : state_(std::make_shared<State>()) {}
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    [[nodiscard]] Subscription subscribe(std::function<void(Args...)> listener) {
        const uint64_t id = ++state_->lastID;
        state_->slots.push_back({id, std::make_shared<std::function<void(Args...)>>(std::move(listener))});
        return Subscription([weak = std::weak_ptr<State>(state_), id] {
            if (auto state = weak.lock()) state->remove(id);
        });
    }

    void emit(Args... args) const {
        const auto state = state_;  // outlives us if a listener destroys us
        const uint64_t newest = state->lastID;
        ++state->emitting;
        for (size_t i = 0; i < state->slots.size() && state->slots[i].id <= newest; ++i)
            if (const auto listener = state->slots[i].listener) (*listener)(args...);
        if (--state->emitting == 0) std::erase_if(state->slots, [](const Slot& slot) { return !slot.listener; });
    }

    bool hasListeners() const {
        for (const Slot& slot : state_->slots)
            if (slot.listener) return true;
        return false;
    }

private:
    struct Slot {
        uint64_t id;
        std::shared_ptr<std::function<void(Args...)>> listener;  // empty once removed during an emission
    };
    struct State {
        std::vector<Slot> slots;
        uint64_t lastID = 0;
        int emitting = 0;

        void remove(uint64_t id) {
            for (size_t i = 0; i < slots.size(); ++i) {
                if (slots[i].id != id) continue;
                const auto dying = std::move(slots[i].listener);  // may own the world; dies after the list is sound
                if (emitting == 0) slots.erase(slots.begin() + static_cast<std::ptrdiff_t>(i));
                return;
            }
        }
    };
    std::shared_ptr<State> state_;
};

}  // namespace morvel
