// A value that tells its subscribers, whole, each time it is set. Main thread only.
#pragma once

#include <functional>
#include <utility>

#include "Util/Signal.h"

namespace morvel {

/// Whether a subscriber is first handed the value as it is now.
enum class Current { Deliver, Skip };

template <class T>
class Published {
public:
    Published() = default;
    explicit Published(T initial) : value_(std::move(initial)) {}

    const T& value() const { return value_; }

    /// Stores first and then tells, equal or not. A subscriber uses the value it is handed: when another one sets
    /// the value again in between, the later value arrives before this round goes on.
    void set(T value) {
        value_ = std::move(value);
        const T told = value_;
        signal_.emit(told);
    }

    [[nodiscard]] Subscription subscribe(std::function<void(const T&)> changed,
                                         Current current = Current::Deliver) const {
        if (current == Current::Deliver) changed(value_);
        return signal_.subscribe(std::move(changed));
    }

private:
    T value_{};
    mutable Signal<const T&> signal_;
};

}  // namespace morvel
