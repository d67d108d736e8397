// A pinned application as it was stored when only applications could be pinned.
#pragma once

#include <string>

namespace morvel {

/// Only ever read.
struct PinnedAppLegacy {
    std::string bundleID;
    std::string displayName;
};

}  // namespace morvel
