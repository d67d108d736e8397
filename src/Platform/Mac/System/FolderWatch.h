// Notices of changes in one folder.
#pragma once

#include <functional>
#include <string>

#include "Platform/Mac/apple/Dispatch.h"
#include "Util/Subscription.h"

namespace morvel::mac {

/// Main thread only. Calls `changed` after something was added to the folder or taken away, and after the folder itself
/// came or went, until the token dies. Absolute path; the folder need not exist.
[[nodiscard]] Subscription watchFolder(const std::string& path, std::function<void()> changed);

}  // namespace morvel::mac
