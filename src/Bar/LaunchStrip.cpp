#include "Bar/LaunchStrip.h"

#include <algorithm>
#include <utility>

#include "Bar/Drag/DragPlaceholderButton.h"
#include "Bar/Drag/RunningWindowDrag.h"
#include "Bar/Pinned/PinnedItemDrag.h"
#include "Bar/Pinned/ReusedViews.h"
#include "Pinned/PinnedDrop.h"
#include "Pinned/PinnedOverflowSlicing.h"
#include "Theme/AccentResolver.h"

namespace morvel {

namespace {

/// Room at the bar's start; part of the strip, so that it is subtracted from the running zone with it.
constexpr double kBarInset = 8;
constexpr double kSpacing = 4;
/// Of an application that does not run.
constexpr ProcessID kNoProcess{0};

}  // namespace

LaunchStrip::LaunchStrip(const BarServices& services, DisplayID screenID, BarReveal reveal)
    : services_(services),
      screenID_(screenID),
      reveal_(std::move(reveal)),
      pinnedStack_(services.mainLoop, ui::StackView::Axis::Horizontal, kSpacing, stackHooks()),
      overflowButton_(buttonServices(), services.mainLoop, services.settings.barEdge.value(), overflowButtonBindings()),
      overflowPopover_(buttonServices(), services.mainLoop, services.pinned, services.settings, overflowBindings()) {
    pinnedStack_.setInsets(kBarInset, 0);
    pinnedStack_.setAccessibilityLabel("Pinned items");
    cachedRunningBundleIDs_ = runningBundleIDs(*services_.store.windows().value());
    const auto rebuilds = [this](const auto&) { rebuild(); };
    subscriptions_.push_back(services_.pinned.pinnedItems().subscribe(rebuilds, Current::Skip));
    subscriptions_.push_back(services_.settings.pinnedMaxVisible.subscribe(rebuilds, Current::Skip));
    rebuild();
}

PinnedStackHooks LaunchStrip::stackHooks() {
    return {.draggedItem = [this](const ui::DragPasteboard& pasteboard) { return draggedItem(pasteboard); },
            .ownView = [this](const std::string& itemID) -> ui::View* { return button(itemID); },
            .placeholder = [this](const PinnedItem& item) { return placeholder(item); },
            .onDrop = [this](const PinnedItem& item, size_t index) { return dropped(item, index); }};
}

PinnedOverflowButtonBindings LaunchStrip::overflowButtonBindings() {
    return {.bordersProvider = [&settings = services_.settings] { return settings.showButtonBorders.value(); },
            .onClick = [this] { overflowClicked(); },
            .onDemote = [this](const std::string& itemID) { return demote(itemID); },
            .onHoverOpen = [this] { hoverOpen(); },
            .onFileDrop = [this](const ui::DragInfo& info) { return filesDropped(info); }};
}

PinnedOverflowBindings LaunchStrip::overflowBindings() {
    PinnedOverflowBindings b;
    b.draggedItem = [this](const ui::DragPasteboard& pasteboard) { return draggedItem(pasteboard); };
    b.processOf = [this](const PinnedItem& item) { return processOf(item); };
    b.onClickItem = [this](const PinnedItem& item) {
        if (services_.actions.onClickPinnedItem) services_.actions.onClickPinnedItem(item, screenID_);
    };
    b.onShow = showInFinder();
    b.onLaunchNew = launchNewInstance();
    b.onWillShow = reveal_.pinReveal;
    b.onDidClose = reveal_.unpinReveal;
    return b;
}

// The next two are kept by menus, which may outlive the strip.

std::function<void(const PinnedItem&)> LaunchStrip::launchNewInstance() const {
    if (!services_.actions.onLaunchNewPinnedInstance) return nullptr;
    return lifetime_.whileAlive(
        [this](const PinnedItem& item) { services_.actions.onLaunchNewPinnedInstance(item, screenID_); });
}

std::function<void(const PinnedItem&)> LaunchStrip::showInFinder() const {
    return [app = services_.actions.app](const PinnedItem& item) {
        if (item.kind == PinnedItem::Kind::App) return app.showInFinder(item.identifier);
        app.showFile(item.identifier);
    };
}

void LaunchStrip::setScreenID(DisplayID screenID) {
    if (std::exchange(screenID_, screenID) == screenID) return;
    overflowPopover_.close();
}

void LaunchStrip::setSystemButtons(std::vector<ui::View*> buttons) {
    for (ui::View* former : systemButtons_)
        if (!std::ranges::count(buttons, former)) former->removeFromParent();
    systemButtons_ = std::move(buttons);
    arrange();
}

void LaunchStrip::rebuild() {
    const std::vector<PinnedItem>& items = services_.pinned.pinnedItems().value();
    const auto sliced = PinnedOverflowSlicing::slice(items, services_.settings.pinnedMaxVisible.value());
    pinnedBundleIDs_.clear();
    for (const PinnedItem& item : items)
        if (item.kind == PinnedItem::Kind::App) pinnedBundleIDs_.insert(item.identifier);
    reuseViews(pinnedButtons_, sliced.visible, [this](const PinnedItem& item) { return makeButton(item); });
    hasOverflow_ = sliced.hasOverflow();
    showRunning();
    arrange();
}

void LaunchStrip::arrange() {
    std::vector<ui::View*> views = systemButtons_;
    for (const Button& button : pinnedButtons_) views.push_back(button.get());
    if (hasOverflow_) {
        views.push_back(&overflowButton_);
    } else {
        overflowButton_.removeFromParent();
    }
    pinnedStack_.arrange(views, systemButtons_.size(), hasOverflow_ ? 1 : 0);
}

PinnedAppButton* LaunchStrip::button(const std::string& itemID) const {
    const auto found = std::ranges::find_if(
        pinnedButtons_, [&](const Button& button) { return button->pinnedItem().isIdentifiedBy(itemID); });
    return found == pinnedButtons_.end() ? nullptr : found->get();
}

LaunchStrip::Button LaunchStrip::makeButton(const PinnedItem& item) {
    SettingsStore& settings = services_.settings;
    PinnedAppButtonBindings b;
    b.actions.onClick = [this, item] {
        onClick();
        closeOverflow();
        if (services_.actions.onClickPinnedItem) services_.actions.onClickPinnedItem(item, screenID_);
    };
    b.actions.onUnpin = [&store = services_.pinned, itemID = item.id()] { store.unpin(itemID); };
    if (const auto launch = launchNewInstance()) b.actions.onLaunchNewInstance = [launch, item] { launch(item); };
    b.actions.onShow = [show = showInFinder(), item] { show(item); };
    b.actions.reveal = reveal_;
    b.bordersProvider = [&settings] { return settings.showButtonBorders.value(); };
    b.accentProvider = [&settings] { return AccentResolver::resolved(settings); };
    b.onFileDrop = [this](const ui::DragInfo& info) { return filesDropped(info); };
    return std::make_unique<PinnedAppButton>(buttonServices(), item, processOf(item), std::move(b));
}

std::unique_ptr<ui::View> LaunchStrip::placeholder(const PinnedItem& item) const {
    if (item.kind == PinnedItem::Kind::Folder)
        return std::make_unique<DragPlaceholderButton>(services_.iconCache, services_.icons.fileIcon(item.identifier));
    return std::make_unique<DragPlaceholderButton>(services_.iconCache, item.identifier, processOf(item));
}

ProcessID LaunchStrip::processOf(const PinnedItem& item) const {
    if (item.kind != PinnedItem::Kind::App) return kNoProcess;
    for (const auto& [id, window] : *services_.store.windows().value())
        if (window.bundleID == item.identifier) return window.pid;
    return kNoProcess;
}

std::set<std::string> LaunchStrip::runningBundleIDs(const WindowMap& windows) {
    std::set<std::string> running;
    for (const auto& [id, window] : windows)
        if (window.bundleID) running.insert(*window.bundleID);
    return running;
}

void LaunchStrip::windowsChanged(const WindowMap& windows) {
    std::set<std::string> running = runningBundleIDs(windows);
    if (running == cachedRunningBundleIDs_) return;
    cachedRunningBundleIDs_ = std::move(running);
    showRunning();
}

void LaunchStrip::showRunning() {
    for (const Button& button : pinnedButtons_)
        button->setRunning(cachedRunningBundleIDs_.contains(button->pinnedItem().identifier));
}

void LaunchStrip::applyAppearance() {
    for (const Button& button : pinnedButtons_) {
        button->refreshAccent();
        button->refreshBorders();
    }
    overflowButton_.refreshBorders();
}

std::optional<PinnedItem> LaunchStrip::draggedItem(const ui::DragPasteboard& pasteboard) const {
    if (const auto itemID = PinnedItemDrag::itemID(pasteboard)) {
        const PinnedItem* item = services_.pinned.find(*itemID);
        return item ? std::optional(*item) : std::nullopt;
    }
    const auto windowID = RunningWindowDrag::window(pasteboard);
    if (!windowID) return std::nullopt;
    const WindowMap& windows = *services_.store.windows().value();
    const auto window = windows.find(*windowID);
    if (window == windows.end() || !window->second.bundleID) return std::nullopt;
    return PinnedItem::app(*window->second.bundleID, window->second.appName);
}

bool LaunchStrip::isPinnedItemDragged(const ui::DragPasteboard& pasteboard) const {
    const auto itemID = PinnedItemDrag::itemID(pasteboard);
    return itemID && services_.pinned.find(*itemID);
}

bool LaunchStrip::dropped(const PinnedItem& item, size_t index) {
    const int place = PinnedOverflowSlicing::dropIndexOnBar(
        services_.pinned.pinnedItems().value(), services_.settings.pinnedMaxVisible.value(), item.id(), index);
    services_.pinned.pinAt(place, {item});
    return true;
}

bool LaunchStrip::filesDropped(const ui::DragInfo& info) {
    std::vector<PinnedItem> items;
    for (const std::string& path : info.pasteboard.filePaths())
        if (auto item = PinnedDrop::itemAt(path, services_.installedApplications)) items.push_back(std::move(*item));
    const size_t index = pinnedStack_.dropIndex(info.location);
    services_.pinned.pinAt(PinnedDrop::slot(index, systemButtons_.size()), items);
    return !items.empty();
}

bool LaunchStrip::demote(const std::string& itemID) {
    if (!services_.pinned.find(itemID)) return false;
    services_.pinned.move(itemID, services_.settings.pinnedMaxVisible.value());
    return true;
}

void LaunchStrip::overflowClicked() {
    onClick();
    isSprungOpen_ = false;
    if (overflowPopover_.isShown()) return overflowPopover_.close();
    overflowPopover_.show(overflowButton_);
}

void LaunchStrip::hoverOpen() {
    // Where everything has found a place during the drag, the button is gone.
    if (!hasOverflow_ || overflowPopover_.isShown()) return;
    isSprungOpen_ = true;
    overflowPopover_.show(overflowButton_);
}

void LaunchStrip::dragEnded() {
    pinnedStack_.draggingEnded();
    overflowPopover_.dragEnded();
    // What a drag opened on its way to somewhere else has no use any more.
    if (std::exchange(isSprungOpen_, false) && !overflowPopover_.tookDrop()) overflowPopover_.close();
}

}  // namespace morvel
