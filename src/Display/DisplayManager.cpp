#include "Display/DisplayManager.h"

#include <algorithm>
#include <utility>

namespace morvel {

namespace {

/// While displays wake or are plugged in, some are missing for a moment; a bar is taken away only after this rest.
constexpr Duration kScreensSettleDelay = std::chrono::milliseconds(200);
/// The notice of a Space switch comes before the switch's animation ends, when the answers still name the old Space.
constexpr Duration kSpaceSettleDelay = std::chrono::milliseconds(300);
/// An application that comes to the front while it starts builds its menus after the notice, and one that starts or
/// ends adds or takes its status item away a moment later, when the others move.
constexpr Duration kMenuBarSettleDelay = std::chrono::milliseconds(500);

}  // namespace

DisplayManager::DisplayManager(const BarServices& services, WindowServer& windowServer, Workspace& workspace,
                               Accessibility& accessibility)
    : services_(services),
      workspace_(workspace),
      spaceEvents_(windowServer),
      menuBar_({accessibility, windowServer, workspace, services.screens}) {}

void DisplayManager::start() {
    rebuild();
    subscriptions_.push_back(services_.screens.observeChanges([this] { screensChanged(); }));
    spaceEvents_.start([this](uint32_t) { spaceChanged(); });
    subscriptions_.push_back(workspace_.observeActiveSpaceChanged([this] { spaceChanged(); }));
    installWorkspaceObservers();
    observeSettings();
}

void DisplayManager::installWorkspaceObservers() {
    const auto changes = [this](const RunningApplication&) { menuBarChanged(); };
    subscriptions_.push_back(workspace_.observeActivated(changes));
    subscriptions_.push_back(workspace_.observeLaunched(changes));
    subscriptions_.push_back(workspace_.observeTerminated(changes));
    // The menus stand on the display that has the focused window. A change of window within one application moves them
    // to another display without any notice of the workspace.
    subscriptions_.push_back(services_.store.focusedID().subscribe(
        [this](const std::optional<WindowID>&) {
            if (controllers_.size() > 1) menuBarChanged();
        },
        Current::Skip));
}

void DisplayManager::observeSettings() {
    SettingsStore& settings = services_.settings;
    const auto rebuildsAll = [this](const auto&) { rebuildAllNextTurn(); };
    subscriptions_.push_back(settings.barEdge.subscribe(rebuildsAll, Current::Skip));
    subscriptions_.push_back(settings.barHeight.subscribe(rebuildsAll, Current::Skip));
    subscriptions_.push_back(settings.compactAtTop.subscribe(rebuildsAll, Current::Skip));
    subscriptions_.push_back(settings.matchMenuBarHeight.subscribe(rebuildsAll, Current::Skip));
    subscriptions_.push_back(settings.compactTopRightBuffer.subscribe(rebuildsAll, Current::Skip));
    subscriptions_.push_back(settings.autoDetectMacOSItemsWidth.subscribe(rebuildsAll, Current::Skip));
    const auto refreshes = [this](const auto&) {
        services_.mainLoop.post(lifetime_.whileAlive([this] { refreshCompactTop(); }));
    };
    subscriptions_.push_back(settings.autoDetectMacOSMenuWidth.subscribe(refreshes, Current::Skip));
    subscriptions_.push_back(settings.compactTopCollapsedItemCount.subscribe(refreshes, Current::Skip));
}

/// A change of a setting comes from inside whatever changed it, which may be a menu of the very bar that is remade. The
/// settings of an import all change in one turn.
void DisplayManager::rebuildAllNextTurn() {
    if (std::exchange(isRebuildPosted_, true)) return;
    services_.mainLoop.post(lifetime_.whileAlive([this] {
        isRebuildPosted_ = false;
        rebuildAll();
    }));
}

std::vector<Screen> DisplayManager::connectedScreens() const {
    std::vector<Screen> screens = services_.screens.screens();
    std::erase_if(screens, [](const Screen& screen) { return !screen.displayID; });
    return screens;
}

std::vector<OtherScreen> DisplayManager::otherScreensExcluding(DisplayID id) const {
    std::vector<OtherScreen> others;
    for (const Screen& screen : connectedScreens())
        if (screen.displayID != id) others.push_back({screen.name, *screen.displayID});
    return others;
}

void DisplayManager::rebuild() {
    reconcile(Missing::TearDown);
}

void DisplayManager::rebuildAll() {
    // The bars that are made go on with the order that the windows had on the former ones, and as they were expanded.
    struct Kept {
        RunningStripArranger order;
        bool isExpanded;
    };
    std::map<DisplayID, Kept> kept;
    for (const auto& [display, controller] : controllers_)
        kept.emplace(display, Kept{controller->view().runningOrder(), controller->isCompactTopExpanded()});
    controllers_.clear();
    uuids_.clear();
    rebuild();
    for (const auto& [display, controller] : controllers_) {
        const auto former = kept.find(display);
        if (former == kept.end()) continue;
        controller->view().adoptRunningOrder(former->second.order);
        controller->setCompactTopExpanded(former->second.isExpanded);
    }
}

void DisplayManager::refreshCompactTop() {
    menuBar_.forget();
    for (const auto& [display, controller] : controllers_) controller->reframe();
}

/// Now, and again once it has settled. Bars that are not beside the menu bar take no part and ask nobody.
void DisplayManager::menuBarChanged() {
    if (std::ranges::none_of(controllers_, [](const auto& entry) { return entry.second->isCompactTop(); })) return;
    refreshCompactTop();
    menuBarSettled_ = services_.mainLoop.after(kMenuBarSettleDelay, [this] { refreshCompactTop(); });
}

void DisplayManager::screensChanged() {
    reconcile(Missing::Keep);
    screensSettled_ = services_.mainLoop.after(kScreensSettleDelay, [this] { rebuild(); });
}

void DisplayManager::spaceChanged() {
    reconcile(Missing::Keep);
    spaceSettled_ = services_.mainLoop.after(kSpaceSettleDelay, [this] { reconcile(Missing::Keep); });
}

void DisplayManager::reconcile(Missing missing) {
    const std::vector<Screen> connected = connectedScreens();
    if (connected.empty()) return;  // what a waking system reports; the bars stay for when the displays are back
    menuBar_.forget();
    const auto spaces = services_.spaceQuery.snapshotByDisplay();
    for (const Screen& screen : connected) {
        if (screen.frame.isEmpty()) continue;  // in the middle of a reconfiguration; what bar it has stays as it is
        const DisplayID display = *screen.displayID;
        const auto found = spaces.find(display);
        const auto current = found != spaces.end() ? found->second.current : services_.spaceQuery.activeSpace();
        auto& controller = controllers_[display];
        if (!controller) {
            const std::string uuid = services_.screens.uuidString(display).value_or("");
            controller = takeControllerOf(uuid, connected);
            uuids_[display] = uuid;
        }
        if (controller) {
            controller->update(screen, current);
        } else {
            controller = std::make_unique<MorvelController>(services_, menuBar_, screen, current);
        }
    }
    const auto isGone = [&](const auto& entry) {
        return std::ranges::find(connected, std::optional(entry.first), &Screen::displayID) == connected.end();
    };
    if (missing == Missing::Keep) {
        for (const auto& entry : controllers_)
            if (isGone(entry)) entry.second->displayWentAway();
        return;
    }
    std::erase_if(uuids_, isGone);
    std::erase_if(controllers_, isGone);
}

/// The bar of a display that came back under another number: its panel is moved and keeps its contents.
std::unique_ptr<MorvelController> DisplayManager::takeControllerOf(const std::string& uuid,
                                                                   const std::vector<Screen>& connected) {
    if (uuid.empty()) return nullptr;
    for (auto& [display, controller] : controllers_) {
        if (!controller || uuids_[display] != uuid) continue;
        if (std::ranges::find(connected, std::optional(display), &Screen::displayID) != connected.end()) continue;
        auto taken = std::move(controller);
        uuids_.erase(display);
        controllers_.erase(display);
        return taken;
    }
    return nullptr;
}

}  // namespace morvel
