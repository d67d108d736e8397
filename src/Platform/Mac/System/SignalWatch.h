// Requests to end that come as signals: from a log-out of the shell, from `kill`, from Ctrl-C.
#pragma once

#include <functional>

#include "Util/Subscription.h"

namespace morvel::mac {

/// Calls `asked` on the main thread for each SIGTERM, SIGINT and SIGHUP, which no longer end the process by themselves,
/// until the token dies.
[[nodiscard]] Subscription observeRequestsToEnd(std::function<void()> asked);

}  // namespace morvel::mac
