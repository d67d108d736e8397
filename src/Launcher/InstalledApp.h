// One application that is installed here.
#pragma once

#include <string>

namespace morvel {

struct InstalledApp {
    std::string bundleID;  ///< tells applications apart
    std::string displayName;
    std::string bundleURL;  ///< the absolute path of the bundle, or of what stands for one on this system

    bool operator==(const InstalledApp&) const = default;
};

}  // namespace morvel
