#include "App/AppDelegate.h"

#include <algorithm>

#include "App/SettingsSources.h"

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
    // Every store writes through at once; the bars go with us.
    if (systemChanges_) systemChanges_->revert();
}

void AppDelegate::startCore() {
    windowStore_ =
        std::make_unique<WindowStore>(mint_, [this](ProcessID pid) { return platform_.workspace.isProcessAlive(pid); });
    settings_ = std::make_unique<SettingsStore>(platform_.defaults);
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
    iconCache_ = std::make_unique<IconCache>(platform_.icons, platform_.mainLoop);
    barActions_ = makeBarActions();
    displayManager_ = std::make_unique<DisplayManager>(
        BarServices{platform_.toolkit, platform_.mainLoop, platform_.screens, platform_.icons, *spaceQuery_,
                    *windowStore_, *settings_, *iconCache_, mint_, barActions_},
        platform_.windowServer, platform_.workspace);
    displayManager_->start();
    startClamping();
    subscribeToSettings();
    changeSystem();
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
    subscriptions_.push_back(
        settings_->theme.subscribe([this](Theme theme) { platform_.toolkit.setAppearance(appearanceOf(theme)); }));
    if (platform_.loginItem)
        subscriptions_.push_back(
            settings_->startAtLogin.subscribe([this](bool starts) { platform_.loginItem->setRegistered(starts); }));
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
    actions.onMoveWindow = [this](WindowID id, DisplayID display) {
        const std::vector<Screen> screens = platform_.screens.screens();
        const auto target = std::ranges::find(screens, std::optional(display), &Screen::displayID);
        if (target != screens.end()) observerManager_->moveWindow(id, *target);
    };
    actions.app = appCommands_->actions();
    actions.otherScreens = [this](DisplayID display) { return displayManager_->otherScreensExcluding(display); };
    actions.contextMenu = [this] { return buildSystemMenu(); };
    return actions;
}

void AppDelegate::openSettings() {
    if (!settings_) return;
    if (!settingsWindow_)
        settingsWindow_ = std::make_unique<SettingsWindow>(platform_.toolkit, platform_.mainLoop,
                                                           settingsSources(platform_, *settings_, *clampingBlacklist_));
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
