// The bundles in the system's folders of applications.
#pragma once

#include "Platform/InstalledApplications.h"

namespace morvel::mac {

class MacInstalledApplications : public InstalledApplications {
public:
    std::vector<std::string> folders() override;
    std::string_view suffix() override { return ".app"; }
    /// The top level alone.
    std::optional<std::vector<std::string>> list(const std::string& folder) override;
    std::optional<ApplicationBundle> bundle(const std::string& path) override;
    int compareNames(const std::string& a, const std::string& b) override;
    [[nodiscard]] Subscription observeChanges(std::function<void()> changed) override;
};

}  // namespace morvel::mac
