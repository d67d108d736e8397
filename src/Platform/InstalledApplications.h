// The applications that are installed, running or not, as the folders that hold them tell.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Util/Subscription.h"

namespace morvel {

/// What an application says of itself. What is absent or of the wrong type is nothing.
struct ApplicationBundle {
    std::optional<std::string> identifier;
    std::optional<std::string> displayName;
    std::optional<std::string> name;
    bool isHidden = false;  ///< it asks not to be listed where the person chooses an application
};

/// Any thread, unless a member says otherwise; nothing is kept, so every answer is the disk's of that moment. Shared:
/// a scan off the main thread keeps it alive. Nothing throws.
class InstalledApplications {
public:
    virtual ~InstalledApplications() = default;

    /// Absolute paths, in order of precedence: the first folder's copy of an application wins. They need not exist.
    virtual std::vector<std::string> folders() = 0;
    /// What the names of applications end with: ".app" or ".desktop".
    virtual std::string_view suffix() = 0;
    /// The names of what may be an application in the folder, below which each is a path; in no order. Nothing when the
    /// folder cannot be listed.
    virtual std::optional<std::vector<std::string>> list(const std::string& folder) = 0;
    /// Nothing when there is no application at the path, or it is damaged.
    virtual std::optional<ApplicationBundle> bundle(const std::string& path) = 0;
    /// The order in which the system shows names, a trailing 2 before a trailing 10 and capitals among small letters:
    /// negative, 0 or positive.
    virtual int compareNames(const std::string& a, const std::string& b) = 0;

    /// Main thread only. After something was added to a folder or taken away; several may come for one change.
    [[nodiscard]] virtual Subscription observeChanges(std::function<void()> changed) = 0;
};

}  // namespace morvel
