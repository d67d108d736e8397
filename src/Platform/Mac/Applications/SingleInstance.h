// One process of the application for each person: a further one wakes the first and leaves.
#pragma once

#include <functional>

#include "Util/Subscription.h"

namespace morvel::mac {

/// Whether another process of this application has come before this one. It is told that the person opened the
/// application again.
bool handOverToRunningInstance();

/// Calls `opened` on the main thread when a further process was started and left, until the token dies.
[[nodiscard]] Subscription observeFurtherInstances(std::function<void()> opened);

}  // namespace morvel::mac
