// How long the harness waits. Waiting is always for a state that is looked at again and again.
#pragma once

#include <chrono>

namespace morvel::e2e {

using WaitClock = std::chrono::steady_clock;
using namespace std::chrono_literals;

/// Generous, because a sanitized build on a loaded machine is slow; a state that is reached ends the wait at once.
inline constexpr std::chrono::milliseconds kPatience = 10s;

}  // namespace morvel::e2e
