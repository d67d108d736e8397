// Lets work that may outlive its owner, or see it destroyed by what it calls, find out that the owner is gone.
#pragma once

#include <memory>
#include <utility>

namespace morvel {

/// A member of the owner. Main thread only.
class Lifetime {
public:
    /// Outlives the owner. Kept on the stack by work of the owner that calls out and goes on afterwards.
    class Watch {
    public:
        explicit Watch(std::shared_ptr<const bool> alive) : alive_(std::move(alive)) {}
        bool isAlive() const { return *alive_; }

    private:
        std::shared_ptr<const bool> alive_;
    };

    Lifetime() = default;
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;
    ~Lifetime() { *alive_ = false; }

    Watch watch() const { return Watch(alive_); }

    /// For work that is handed out (a menu's actions, a posted call): `call`, or nothing once the owner is gone.
    template <class Call>
    auto whileAlive(Call call) const {
        return [watch = watch(), call = std::move(call)](auto&&... arguments) {
            if (watch.isAlive()) call(std::forward<decltype(arguments)>(arguments)...);
        };
    }

private:
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace morvel
