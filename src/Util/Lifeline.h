// Lets work that calls out to others notice that its owner was destroyed meanwhile.
#pragma once

#include <memory>

namespace morvel {

/// A member of whoever can be destroyed from inside what it calls. Main thread only.
class Lifeline {
public:
    /// Kept on the stack while calling out; outlives the owner.
    class Watch {
    public:
        explicit Watch(std::shared_ptr<const bool> alive) : alive_(std::move(alive)) {}
        bool isAlive() const { return *alive_; }

    private:
        std::shared_ptr<const bool> alive_;
    };

    Lifeline() = default;
    Lifeline(const Lifeline&) = delete;
    Lifeline& operator=(const Lifeline&) = delete;
    ~Lifeline() { *alive_ = false; }

    Watch watch() const { return Watch(alive_); }

private:
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace morvel
