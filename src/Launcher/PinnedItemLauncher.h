// What a click on a pinned item means: the application or folder is opened, and its window comes to the display whose
// bar was clicked, on the Space that was shown there.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Display/SpaceQuery.h"
#include "Launcher/PendingLaunch.h"
#include "Pinned/PinnedItem.h"
#include "Platform/Accessibility.h"
#include "Platform/Screens.h"
#include "Platform/Workspace.h"
#include "Util/Lifetime.h"
#include "WindowSource/WindowStore.h"

namespace morvel {

/// Main thread only. Waits four seconds for the window of each launch. What it lends to a Space meanwhile it takes back
/// when the window comes, when it does not, and when it is itself destroyed.
class PinnedItemLauncher {
public:
    /// What the launcher needs of the system; all outlive it.
    struct System {
        MainLoop& mainLoop;
        Workspace& workspace;
        Accessibility& accessibility;
        Screens& screens;
        SpaceQuery& spaceQuery;
    };
    using MoveWindow = std::function<void(WindowID, const Screen& to)>;

    /// The store outlives this. `moveWindow` may be asked for a window that is gone.
    PinnedItemLauncher(System system, const WindowStore& store, MoveWindow moveWindow);
    ~PinnedItemLauncher();
    PinnedItemLauncher(const PinnedItemLauncher&) = delete;
    PinnedItemLauncher& operator=(const PinnedItemLauncher&) = delete;

    /// Opens a folder or an application that does not run; asks one that runs for a new window. Nothing happens for an
    /// unknown display or an application that is not installed.
    void click(const PinnedItem& item, DisplayID targetScreenID);
    /// A further process of an application; of a folder the same as a click.
    void launchNewInstance(const PinnedItem& item, DisplayID targetScreenID);

private:
    /// Where a launch's window belongs, and which windows are not it.
    struct Target {
        DisplayID screen;
        std::optional<SpaceID> activeSpaceID;
        WindowIDs knownIDs;
    };

    void launch(const PinnedItem& item, DisplayID targetScreenID, bool forceNewProcess);
    void launchApp(const std::string& bundleID, Target target, bool forceNewProcess);
    void requestWindow(const std::string& bundleID, ProcessID pid, Target target);
    void openFolder(const std::string& path, Target target);

    void enqueuePending(const std::string& bundleID, Target target, bool postRouteActivate,
                        StickyAdditions stickyAdditions = {});
    void expirePending();
    void windowsPublished();
    void processWindows(const WindowMap& windows);
    void arrived(const WindowSnapshot& snapshot, const PendingLaunch& launch);
    void route(const WindowSnapshot& snapshot, const PendingLaunch& launch);

    StickyAdditions stickAppWindowsToSpace(ProcessID pid, std::optional<SpaceID> space);
    void cleanupStickyAdditions(const StickyAdditions& additions);

    std::optional<Screen> screen(DisplayID id) const;
    std::optional<ProcessID> firstRunning(const std::string& bundleID) const;
    bool hasWindows(ProcessID pid) const;

    System system_;
    const WindowStore& store_;
    MoveWindow moveWindow_;
    std::vector<PendingLaunch> pending_;  // oldest first
    std::map<uint64_t, Timer> expirations_;
    uint64_t lastExpiration_ = 0;
    bool isProcessingDue_ = false;
    Subscription windows_;
    Lifetime lifetime_;
};

}  // namespace morvel
