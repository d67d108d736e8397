// The list of installed applications for the launcher, read off the main thread and kept until something changes.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "Launcher/InstalledApp.h"
#include "Platform/InstalledApplications.h"
#include "Platform/MainLoop.h"
#include "Platform/WorkQueue.h"
#include "Util/Lifetime.h"

namespace morvel {

/// Main thread only. Reads nothing before the list is first asked for.
class InstalledAppsLoader {
public:
    using Apps = std::vector<InstalledApp>;
    using Use = std::function<void(const Apps&)>;

    /// `mainLoop` outlives this.
    InstalledAppsLoader(std::shared_ptr<InstalledApplications> installed, MainLoop& mainLoop,
                        std::unique_ptr<WorkQueue> queue);
    InstalledAppsLoader(const InstalledAppsLoader&) = delete;
    InstalledAppsLoader& operator=(const InstalledAppsLoader&) = delete;

    /// Hands out the list, sorted by name: at once when it is known, else after one scan for all who wait. Never, if
    /// the loader is destroyed before.
    void apps(Use use);
    /// The next `apps` scans again. Who waits for a scan already still gets what that one finds.
    void invalidate();

    /// One full scan; any thread. Each application once, from the first folder that has it.
    static Apps scan(InstalledApplications& installed);

private:
    void startScan();
    void scanned(uint64_t scan, Apps apps);

    std::shared_ptr<InstalledApplications> installed_;
    MainLoop& mainLoop_;
    std::unique_ptr<WorkQueue> queue_;
    std::optional<Apps> cache_;
    std::vector<std::pair<uint64_t, Use>> waiting_;  // each with the scan it waits for
    uint64_t lastScan_ = 0;
    bool isScanning_ = false;  // the scan `lastScan_`, and nothing has changed since it began
    Subscription changes_;
    Lifetime lifetime_;
};

}  // namespace morvel
