// Chance that comes again with its seed.
#pragma once

#include <optional>
#include <random>
#include <vector>

namespace morvel {

class Chance {
public:
    explicit Chance(unsigned seed) : random_(seed) {}

    int below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
    bool oneIn(int n) { return below(n) == 0; }
    /// One of them; null or nothing when there is none.
    template <class T>
    const T* anyOf(const std::vector<T>& choices) {
        return choices.empty() ? nullptr : &choices[static_cast<size_t>(below(static_cast<int>(choices.size())))];
    }
    template <class T>
    T* any(const std::vector<T*>& choices) {
        T* const* chosen = anyOf(choices);
        return chosen ? *chosen : nullptr;
    }
    template <class T>
    std::optional<T> any(const std::vector<T>& choices) {
        const T* chosen = anyOf(choices);
        return chosen ? std::optional(*chosen) : std::nullopt;
    }

private:
    std::mt19937 random_;
};

}  // namespace morvel
