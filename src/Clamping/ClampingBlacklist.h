// The applications whose windows may overlap the bar, kept in the defaults.
#pragma once

#include <set>
#include <string>

#include "Settings/Setting.h"

namespace morvel {

/// Main thread only. Reads the defaults once; of a stored array that holds other things too, the texts count.
class ClampingBlacklist {
public:
    /// `defaults` outlives the list.
    explicit ClampingBlacklist(UserDefaults& defaults);

    /// Published and stored at each change.
    const Setting<std::set<std::string>>& bundleIDs() const { return bundleIDs_; }
    bool contains(const std::string& bundleID) const { return bundleIDs_.value().contains(bundleID); }

    void add(const std::string& bundleID);
    void remove(const std::string& bundleID);

private:
    Setting<std::set<std::string>> bundleIDs_;
};

}  // namespace morvel
