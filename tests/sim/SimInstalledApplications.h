// Installed applications as a test writes them down.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Platform/InstalledApplications.h"
#include "Util/Signal.h"

namespace morvel::sim {

/// As on a Mac. Names are compared without regard to case, digits as numbers.
class SimInstalledApplications : public InstalledApplications {
public:
    std::vector<std::string> folders() override {
        std::vector<std::string> paths;
        for (const auto& [path, names] : contents) paths.push_back(path);
        return paths;
    }
    std::string_view suffix() override { return ".app"; }
    std::optional<std::vector<std::string>> list(const std::string& folder) override {
        for (const auto& [path, names] : contents)
            if (path == folder) return names;
        return std::nullopt;
    }
    std::optional<ApplicationBundle> bundle(const std::string& path) override {
        ++bundlesRead;
        const auto found = bundles.find(path);
        return found == bundles.end() ? std::nullopt : std::optional(found->second);
    }
    int compareNames(const std::string& a, const std::string& b) override;
    Subscription observeChanges(std::function<void()> changed) override {
        return changes.subscribe(std::move(changed));
    }

    /// Puts an application into the folder "/Applications".
    void install(const std::string& bundleID, const std::string& name);

    /// Folders in their order, each with the names in it; nothing for one that cannot be listed.
    std::vector<std::pair<std::string, std::optional<std::vector<std::string>>>> contents = {
        {"/Applications", std::vector<std::string>{}}};
    std::map<std::string, ApplicationBundle> bundles;  ///< by path
    Signal<> changes;
    int bundlesRead = 0;
};

}  // namespace morvel::sim
