// The token that whoever can call you back hands you. The callbacks end when it is destroyed or reset.
#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace morvel {

class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    /// `end` runs once: at reset, at destruction, or when another token is moved in.
    explicit Subscription(std::function<void()> end) : end_(std::move(end)) {}
    Subscription(Subscription&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            reset();
            end_ = std::exchange(other.end_, nullptr);
        }
        return *this;
    }
    ~Subscription() { reset(); }

    void reset() {
        // Emptied first, so that an end which destroys its holder runs once.
        if (auto end = std::exchange(end_, nullptr)) end();
    }
    explicit operator bool() const { return end_ != nullptr; }

private:
    std::function<void()> end_;
};

using Subscriptions = std::vector<Subscription>;

}  // namespace morvel
