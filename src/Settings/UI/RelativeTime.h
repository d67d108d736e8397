// How long ago something was, in words.
#pragma once

#include <string>

#include "Platform/UserDefaults.h"

namespace morvel {

/// "just now", "5 minutes ago", "1 hour ago", "3 days ago", …; whole units, rounded down. What lies ahead, as after the
/// clock was set back, counts as just now.
std::string relativeTime(Date then, Date now);

}  // namespace morvel
