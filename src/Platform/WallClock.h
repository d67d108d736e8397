// The time of day and date, which the person or the network may set at any moment.
#pragma once

#include <functional>

#include "Platform/UserDefaults.h"

namespace morvel {

/// Now. Any thread.
using WallClock = std::function<Date()>;

}  // namespace morvel
