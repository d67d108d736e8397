// The desktop entries in the data folders of the person and the system, as installed applications.
#pragma once

#include "Platform/InstalledApplications.h"

namespace morvel::x11 {

/// An entry in a sub-folder is named by its path. What an earlier folder replaces, marks as deleted, or whose program
/// is missing (TryExec) is no application.
class InstalledEntries : public InstalledApplications {
public:
    std::vector<std::string> folders() override;
    std::string_view suffix() override;
    std::optional<std::vector<std::string>> list(const std::string& folder) override;
    std::optional<ApplicationBundle> bundle(const std::string& path) override;
    int compareNames(const std::string& a, const std::string& b) override;
    /// Hears of changes once the folders have been read; each reading makes it listen again.
    [[nodiscard]] Subscription observeChanges(std::function<void()> changed) override;

private:
    std::string identifierOf(const std::string& path);
};

}  // namespace morvel::x11
