// The running applications and what can be asked of them, and the notices of their coming, going and activation.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Util/Identity.h"
#include "Util/Subscription.h"

namespace morvel {

enum class ActivationPolicy { Regular, Accessory, Prohibited };

/// One running application as it is now. `instance` tells two processes apart that had the same number after one
/// another; it is equal for all records of one process.
struct RunningApplication {
    ProcessID pid;
    uint64_t instance = 0;
    std::optional<std::string> bundleID;
    std::optional<std::string> localizedName;
    ActivationPolicy policy = ActivationPolicy::Regular;
};

/// How an application is opened.
struct OpenApplication {
    bool createsNewInstance = false;  ///< a further process, though one runs
    bool activates = true;            ///< brings it to the front
};

/// Main thread only. Requests to other programs are best effort: a refusal shows only in later notices.
class Workspace {
public:
    virtual ~Workspace() = default;

    virtual std::vector<RunningApplication> runningApplications() = 0;
    virtual std::optional<RunningApplication> runningApplication(ProcessID pid) = 0;
    virtual std::optional<ProcessID> frontmostApplication() = 0;
    /// The application whose titles the system's menu bar shows: the one in front, or, while one without a menu bar is
    /// in front, the one before it. Nothing where the system has no menu bar.
    virtual std::optional<ProcessID> menuBarOwner() = 0;
    /// The process that this program is.
    virtual ProcessID ownProcess() = 0;

    /// Brings the application to the front, over others.
    virtual void activate(ProcessID pid) = 0;
    /// Asks the application to quit; it may ask its user first.
    virtual void terminate(ProcessID pid) = 0;
    /// Ends the process without asking.
    virtual void forceTerminate(ProcessID pid) = 0;

    /// Whether the person sees their session: not while the screen is locked or asleep or shows another user's. Other
    /// programs then tell little and nothing may be concluded from it. True where it cannot be told.
    virtual bool isSessionActive() { return true; }
    /// After the session has become active again. An empty token where there is no such notice.
    [[nodiscard]] virtual Subscription observeSessionActivated(std::function<void()>) { return {}; }

    /// Whether the process exists; one that may not be signalled counts as alive.
    virtual bool isProcessAlive(ProcessID pid) = 0;

    /// The path of the installed application, if it can be located.
    virtual std::optional<std::string> locate(const std::string& bundleID) = 0;
    /// The application that shows folders, and whose windows those are that `openFile` opens for them.
    virtual std::string fileManager() = 0;
    /// The person's own folder, an absolute path.
    virtual std::string homeFolder() = 0;
    /// Starts the application at this path, or asks the running one for what it does when it is opened again.
    virtual void openApplication(const std::string& path, const OpenApplication& how) = 0;
    /// Opens a file or folder with the application that is for it. Absolute path.
    virtual void openFile(const std::string& path) = 0;
    /// Shows a page in the person's browser. Only "https" addresses are opened.
    virtual void openPage(const std::string& address) = 0;
    /// Shows the file in the file manager, selected where that is possible.
    virtual void revealInFileManager(const std::string& path) = 0;

    using ApplicationNotice = std::function<void(const RunningApplication&)>;
    [[nodiscard]] virtual Subscription observeLaunched(ApplicationNotice notice) = 0;
    [[nodiscard]] virtual Subscription observeTerminated(ApplicationNotice notice) = 0;
    [[nodiscard]] virtual Subscription observeActivated(ApplicationNotice notice) = 0;
    [[nodiscard]] virtual Subscription observeActiveSpaceChanged(std::function<void()> notice) = 0;
};

}  // namespace morvel
