// The clock that the system's timers run on.
#pragma once

#include <cstdint>

namespace morvel::mac {

/// Nanoseconds since the machine was started, without the time it slept, as dispatch timers count them. Any thread.
std::uint64_t uptimeNanoseconds();

}  // namespace morvel::mac
