#include "App/AppDelegate.h"

#include <algorithm>

#include "App/SettingsSources.h"
#include "Bar/MenuBar/AppleMenu.h"
#include "Update/UpdateChecker.h"

namespace morvel {

namespace {

ui::Appearance appearanceOf(Theme theme) {
    switch (theme) {
        case Theme::System:
            break;
        case Theme::Light:
            return ui::Appearance::Light;
        case Theme::Dark:
            return ui::Appearance::Dark;
    }
    return ui::Appearance::System;
}

}  // namespace

AppDelegate::AppDelegate(const Platform& platform)
    : platform_(platform), permissionGate_(platform.accessibility, platform.mainLoop) {}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
    // The settings exist only once the permission is there; the way to quit has to be there before.
    if (platform_.defaults.object("showMenuBarIcon") == DefaultsValue{true}) installStatusItem();
    if (permissionGate_.isTrusted()) return startCore();
    askForPermission([this] { startCore(); });
}

void AppDelegate::askForPermission(std::function<void()> granted) {
    permissionWindow_ =
        std::make_unique<PermissionWindow>(permissionGate_, platform_.toolkit, [this, granted = std::move(granted)] {
            permissionWindow_.reset();
            granted();
        });
    permissionWindow_->show();
}

void AppDelegate::applicationWillTerminate() {
    // Every store writes through at once; the bars go with us. On some systems the process ends without taking anything
    // apart, and what was lent to a Space must not stay there.
    pinnedItemLauncher_.reset();
    if (systemChanges_) systemChanges_->revert();
}

void AppDelegate::startCore() {
    windowStore_ =
        std::make_unique<WindowStore>(mint_, [this](ProcessID pid) { return platform_.workspace.isProcessAlive(pid); });
    settings_ = std::make_unique<SettingsStore>(platform_.defaults);
    pinnedStore_ = std::make_unique<PinnedAppsStore>(platform_.defaults);
    startNowPlaying();
    observerManager_ = std::make_unique<AXObserverManager>(
        AXObserverManager::System{platform_.mainLoop, platform_.log, platform_.accessibility, platform_.windowServer,
                                  platform_.workspace, platform_.screens},
        mint_, *windowStore_);
    observerManager_->onPermissionLost = [this] {
        askForPermission([this] {
            observerManager_->restart();
            observerManager_->adoptFocus();
        });
    };
    observerManager_->start();
    observerManager_->adoptFocus();
    appCommands_ = std::make_unique<AppCommands>(platform_.workspace, platform_.mainLoop);
    spaceQuery_ = std::make_unique<SpaceQuery>(platform_.windowServer, platform_.screens);
    makeLaunchers();
    iconCache_ = std::make_unique<IconCache>(platform_.icons, platform_.mainLoop);
    subscriptions_.push_back(platform_.workspace.observeTerminated(
        [this](const RunningApplication& application) { iconCache_->forget(application.pid); }));
    barActions_ = makeBarActions();
    displayManager_ = std::make_unique<DisplayManager>(
        BarServices{platform_.toolkit, platform_.mainLoop, platform_.screens, platform_.icons, *spaceQuery_,
                    *windowStore_, *settings_, *pinnedStore_, *platform_.installedApplications, *iconCache_,
                    *nowPlaying_, mint_, barActions_},
        platform_.windowServer, platform_.workspace, platform_.accessibility);
    displayManager_->start();
    startUpdates();
    startClamping();
    subscribeToSettings();
    changeSystem();
}

void AppDelegate::makeLaunchers() {
    pinnedItemLauncher_ = std::make_unique<PinnedItemLauncher>(
        PinnedItemLauncher::System{platform_.mainLoop, platform_.workspace, platform_.accessibility, platform_.screens,
                                   *spaceQuery_},
        *windowStore_, [this](WindowID id, const Screen& to) { observerManager_->moveWindow(id, to); });
    installedApps_ = std::make_unique<InstalledAppsLoader>(platform_.installedApplications, platform_.mainLoop,
                                                           platform_.makeWorkQueue("installed applications"));
}

void AppDelegate::startNowPlaying() {
    NowPlayingPoller* poller = platform_.nowPlayingPoller;
    if (!poller && platform_.scriptRunner) {
        scriptPoller_ =
            std::make_unique<AppleScriptPoller>(platform_.scriptRunner, platform_.mainLoop, platform_.makeWorkQueue);
        poller = scriptPoller_.get();
    }
    nowPlaying_ = std::make_unique<NowPlayingStore>(poller, platform_.mainLoop);
    if (settings_->nowPlayingEnabled.value()) nowPlaying_->start();
}

void AppDelegate::startUpdates() {
    const std::string version = platform_.programVersion.value_or("");
    updateController_ = std::make_unique<UpdateController>(
        *settings_, UpdateController::Environment{platform_.mainLoop, platform_.wallClock,
                                                  SemanticVersion::parse(version), platform_.systemVersion,
                                                  [checker = UpdateChecker(platform_.httpClient)](auto fetched) {
                                                      checker.fetchLatest(std::move(fetched));
                                                  }});
    updateController_->start();
}

void AppDelegate::startClamping() {
    clampingBlacklist_ = std::make_unique<ClampingBlacklist>(platform_.defaults);
    windowClamper_ = std::make_unique<WindowClamper>(
        WindowClamper::System{
            platform_.mainLoop, platform_.screens, platform_.workspace,
            [this] { return platform_.toolkit.isMouseButtonDown(); },
            [this](WindowID id, const Rect<AXSpace>& frame) { observerManager_->setWindowFrame(id, frame); }},
        *windowStore_, *clampingBlacklist_, *settings_);
    windowClamper_->start();
}

void AppDelegate::subscribeToSettings() {
    if (platform_.loginItem)
        subscriptions_.push_back(
            settings_->startAtLogin.subscribe([this](bool starts) { platform_.loginItem->setRegistered(starts); }));
    subscriptions_.push_back(settings_->nowPlayingEnabled.subscribe(
        [this](bool enabled) { enabled ? nowPlaying_->start() : nowPlaying_->stop(); }, Current::Skip));
    subscriptions_.push_back(
        settings_->theme.subscribe([this](Theme theme) { platform_.toolkit.setAppearance(appearanceOf(theme)); }));
}

void AppDelegate::changeSystem() {
    const auto followStatusItem = [this] {
        subscriptions_.push_back(settings_->showMenuBarIcon.subscribe([this](bool isShown) {
            if (!isShown) statusItem_.reset();
            if (isShown && !statusItem_) installStatusItem();
        }));
    };
    if (!platform_.shellCommands) return followStatusItem();
    const auto changed = [this] {
        if (statusItem_) statusItem_->setMenu(buildSystemMenu());
    };
    systemChanges_ = std::make_unique<SystemChanges>(
        SystemChanges::System{*platform_.shellCommands, platform_.defaults, platform_.toolkit, platform_.log, changed},
        *settings_);
    systemChanges_->start();
    systemChanges_->makeOffers(followStatusItem);
}

void AppDelegate::installStatusItem() {
    statusItem_ = platform_.toolkit.makeStatusItem(buildSystemMenu());
}

BarActions AppDelegate::makeBarActions() {
    BarActions actions;
    actions.onActivate = [this](WindowID id) { observerManager_->raiseWindow(id); };
    actions.onActivateApp = [this](ProcessID pid) { platform_.workspace.activate(pid); };
    actions.onClickRunningWindow = [this](WindowID id) { observerManager_->clickWindow(id); };
    actions.onMinimizeWindow = [this](WindowID id) { observerManager_->minimizeWindow(id); };
    actions.onClose = [this](WindowID id) { observerManager_->closeWindow(id); };
    actions.onPinApp = [this](ProcessID pid) { pinApplication(pid); };
    actions.onMoveWindow = [this](WindowID id, DisplayID display) {
        const std::vector<Screen> screens = platform_.screens.screens();
        const auto target = std::ranges::find(screens, std::optional(display), &Screen::displayID);
        if (target != screens.end()) observerManager_->moveWindow(id, *target);
    };
    actions.onClickPinnedItem = [this](const PinnedItem& item, DisplayID display) {
        if (pinnedItemLauncher_) pinnedItemLauncher_->click(item, display);
    };
    actions.onLaunchNewPinnedInstance = [this](const PinnedItem& item, DisplayID display) {
        if (pinnedItemLauncher_) pinnedItemLauncher_->launchNewInstance(item, display);
    };
    if (platform_.screens.statusBarThickness() > 0) {  // there are such menus only where the system has a menu bar
        actions.onAppleMenu = [this] {
            if (const auto owner = platform_.workspace.menuBarOwner()) openAppleMenu(platform_.accessibility, *owner);
        };
    }
    actions.app = appCommands_->actions();
    actions.installedApps = [this](InstalledAppsLoader::Use use) { installedApps_->apps(std::move(use)); };
    actions.onLaunchApp = [this](const InstalledApp& app) {
        platform_.workspace.openApplication(app.bundleURL, {.activates = true});
    };
    actions.otherScreens = [this](DisplayID display) { return displayManager_->otherScreensExcluding(display); };
    actions.contextMenu = [this] { return buildSystemMenu(); };
    return actions;
}

/// Under the name that its buttons show. What has no bundle identifier could not be found again.
void AppDelegate::pinApplication(ProcessID pid) {
    for (const WindowSnapshot& window : windowStore_->snapshot(pid))
        if (window.bundleID) return pinnedStore_->pinApp(*window.bundleID, window.appName);
}

void AppDelegate::openSettings() {
    if (!settings_) {
        // What the person has to do first; they may have closed its window.
        if (permissionWindow_) permissionWindow_->show();
        return;
    }
    if (!settingsWindow_)
        settingsWindow_ = std::make_unique<SettingsWindow>(
            platform_.toolkit, platform_.mainLoop,
            settingsSources(platform_, *settings_, *pinnedStore_, *clampingBlacklist_, *updateController_));
    settingsWindow_->show();
}

ui::Menu AppDelegate::buildSystemMenu() {
    ui::Menu menu;
    menu.push_back({.title = "Morvel Settings…", .action = [this] { openSettings(); }, .keyEquivalent = ","});
    menu.push_back(ui::MenuItem::separator());
    menu.push_back({.title = "Quit Morvel", .action = platform_.terminate, .keyEquivalent = "q"});
    return menu;
}

}  // namespace morvel
