// Makes fresh window identities. One for the whole program, owned by the composition root.
#pragma once

#include <random>

#include "Util/Identity.h"

namespace morvel {

class WindowIDMint {
public:
    /// Seeded from the system's entropy.
    WindowIDMint() : WindowIDMint(std::random_device{}()) {}
    /// A repeatable sequence, for tests.
    explicit WindowIDMint(uint64_t seed) : random_(seed) {}

    /// A random (version 4) UUID.
    WindowID next() {
        constexpr uint64_t kVersionMask = 0xF000, kVersion4 = 0x4000;
        constexpr uint64_t kVariantMask = 0xC000'0000'0000'0000, kVariant = 0x8000'0000'0000'0000;
        return {(random_() & ~kVersionMask) | kVersion4, (random_() & ~kVariantMask) | kVariant};
    }

private:
    std::mt19937_64 random_;
};

}  // namespace morvel
