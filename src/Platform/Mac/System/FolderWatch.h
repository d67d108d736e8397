// Notices of changes in one folder.
#pragma once

#include <functional>
#include <string>

#include "Platform/Mac/apple/Dispatch.h"
#include "Util/Subscription.h"

namespace morvel::mac {

/// Main thread only. Calls `changed` after something was added to the folder or taken away, until the token dies. An
/// empty token when there is no such folder: one that is made later is not noticed.
[[nodiscard]] Subscription watchFolder(const std::string& path, std::function<void()> changed);

}  // namespace morvel::mac
