// The composition root: makes everything that lives as long as the program, in order, and wires it together.
#pragma once

#include <memory>

#include "App/SystemChanges.h"
#include "Bar/BarServices.h"
#include "Bar/Buttons/AppCommands.h"
#include "Clamping/ClampingBlacklist.h"
#include "Clamping/WindowClamper.h"
#include "Display/DisplayManager.h"
#include "Display/SpaceQuery.h"
#include "Launcher/InstalledAppsLoader.h"
#include "Launcher/PinnedItemLauncher.h"
#include "NowPlaying/AppleScriptPoller.h"
#include "NowPlaying/NowPlayingStore.h"
#include "Permissions/AXPermissionGate.h"
#include "Permissions/PermissionWindow.h"
#include "Pinned/PinnedAppsStore.h"
#include "Platform/Platform.h"
#include "Settings/SettingsStore.h"
#include "Settings/UI/SettingsWindow.h"
#include "Theme/IconCache.h"
#include "Update/UpdateController.h"
#include "Util/WindowIDMint.h"
#include "WindowSource/AXObserverManager.h"
#include "WindowSource/WindowStore.h"

namespace morvel {

/// Main thread only. One per program; the host's `main` makes it and calls the two moments of its life.
class AppDelegate {
public:
    explicit AppDelegate(const Platform& platform);
    ~AppDelegate();

    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    /// The menu of an empty area of a bar, made afresh each time.
    ui::Menu buildSystemMenu();
    /// The settings window, which is made when it is first asked for. Before the core has started there are no
    /// settings: the permission window comes to the front instead.
    void openSettings();

    /// The following exist once the core has started, and are null before.
    const WindowStore* windowStore() const { return windowStore_.get(); }
    SettingsStore* settings() { return settings_.get(); }
    PinnedAppsStore* pinnedStore() { return pinnedStore_.get(); }
    DisplayManager* displayManager() { return displayManager_.get(); }
    /// Also null again once the program is about to end.
    PinnedItemLauncher* pinnedItemLauncher() { return pinnedItemLauncher_.get(); }
    const BarActions& barActions() const { return barActions_; }
    NowPlayingStore* nowPlaying() { return nowPlaying_.get(); }
    UpdateController* updateController() { return updateController_.get(); }
    ClampingBlacklist* clampingBlacklist() { return clampingBlacklist_.get(); }

private:
    /// At most once.
    void startCore();
    /// Shows the permission window until the permission is there.
    void askForPermission(std::function<void()> granted);
    void startNowPlaying();
    void startUpdates();
    BarActions makeBarActions();
    void pinApplication(ProcessID pid);
    void makeLaunchers();
    void startClamping();
    void installStatusItem();
    /// Asks what is to be asked at the first launches; the status item follows its setting from then on.
    void changeSystem();
    void subscribeToSettings();

    Platform platform_;
    WindowIDMint mint_;
    AXPermissionGate permissionGate_;
    std::unique_ptr<PermissionWindow> permissionWindow_;  // while it is shown
    std::unique_ptr<ui::StatusItemPeer> statusItem_;      // while it is shown
    // In the order of creation: what comes later uses what comes before.
    std::unique_ptr<WindowStore> windowStore_;
    std::unique_ptr<SettingsStore> settings_;
    std::unique_ptr<PinnedAppsStore> pinnedStore_;
    std::unique_ptr<AppleScriptPoller> scriptPoller_;  // where the host has no poller of its own
    std::unique_ptr<NowPlayingStore> nowPlaying_;
    std::unique_ptr<AXObserverManager> observerManager_;
    std::unique_ptr<AppCommands> appCommands_;
    std::unique_ptr<SpaceQuery> spaceQuery_;
    std::unique_ptr<PinnedItemLauncher> pinnedItemLauncher_;
    std::unique_ptr<InstalledAppsLoader> installedApps_;
    std::unique_ptr<IconCache> iconCache_;
    BarActions barActions_;
    std::unique_ptr<DisplayManager> displayManager_;
    std::unique_ptr<UpdateController> updateController_;
    std::unique_ptr<ClampingBlacklist> clampingBlacklist_;
    std::unique_ptr<WindowClamper> windowClamper_;
    std::unique_ptr<SettingsWindow> settingsWindow_;
    std::unique_ptr<SystemChanges> systemChanges_;  // where the system has what it changes
    Subscriptions subscriptions_;
};

}  // namespace morvel
