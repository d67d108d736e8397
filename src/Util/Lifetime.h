// Lets work that may outlive its asker (a menu's actions, a posted call) find out that the asker is gone.
#pragma once

#include <memory>
#include <utility>

namespace morvel {

/// A member of the asker. Main thread only.
class Lifetime {
public:
    /// `call`, or nothing once the owner of this is gone.
    template <class Call>
    auto whileAlive(Call call) const {
        return [weak = std::weak_ptr<const Token>(token_), call = std::move(call)](auto&&... arguments) {
            if (weak.lock()) call(std::forward<decltype(arguments)>(arguments)...);
        };
    }

private:
    struct Token {};
    std::shared_ptr<const Token> token_ = std::make_shared<const Token>();
};

}  // namespace morvel
