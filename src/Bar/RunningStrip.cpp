#include "Bar/RunningStrip.h"

#include <algorithm>
#include <unordered_set>

#include "Bar/Drag/DragPlaceholderButton.h"
#include "Bar/Layout/RunningZoneWidths.h"
#include "Theme/AccentResolver.h"

namespace morvel {

namespace {

constexpr double kRunningSpacing = 4;

/// The action with its first argument bound, or nothing where the action does not exist.
template <class Argument, class... Rest>
std::function<void(Rest...)> bound(const std::function<void(Argument, Rest...)>& action, Argument argument) {
    if (!action) return nullptr;
    return [action, argument](Rest... rest) { action(argument, rest...); };
}

}  // namespace

RunningStrip::RunningStrip(const BarServices& services, DisplayID screenID, BarReveal reveal, Drops drops,
                           NowPlayingControls nowPlayingControls)
    : services_(services),
      screenID_(screenID),
      reveal_(std::move(reveal)),
      drops_(std::move(drops)),
      nowPlayingControls_(std::move(nowPlayingControls)),
      runningStack_(services.mainLoop, kRunningSpacing, stackHooks()),
      groupPopover_(buttonServices(), popoverBindings()),
      dragHoverClock_(services.mainLoop),
      dragHover_(dragHoverClock_, dragHoverActions()) {}

RunningStackHooks RunningStrip::stackHooks() {
    return {.ownButton = [this](const WindowID& id) -> ui::View* {
                // Among groups only placeholders have buttons of their own, and theirs is a fixed order.
                const auto found = windowButtons_.find(id);
                return isGrouped_ || found == windowButtons_.end() ? nullptr : found->second.get();
            },
            .placeholder = [this](const ui::DragPasteboard& pasteboard) { return placeholder(pasteboard); },
            .onDrop = drops_.dropped,
            .onWheel = [this](double notches) { wheelTurned(notches); }};
}

std::unique_ptr<ui::View> RunningStrip::placeholder(const ui::DragPasteboard& pasteboard) const {
    const auto id = drops_.foreignWindow(pasteboard);
    if (!id) return nullptr;
    const WindowMap& windows = *services_.store.windows().value();
    const auto window = windows.find(*id);
    // A windowless application has nothing that could be moved to another display.
    if (window == windows.end() || window->second.isWindowless) return nullptr;
    return std::make_unique<DragPlaceholderButton>(services_.iconCache, window->second.bundleID, window->second.pid);
}

DragHoverActions RunningStrip::dragHoverActions() {
    DragHoverActions a;
    a.modeProvider = [&settings = services_.settings] { return settings.dragHoverRaiseMode.value(); };
    a.raiseWindow = [this](WindowID id) { services_.actions.onActivate(id); };
    a.activateApp = [this](ProcessID pid) { services_.actions.onActivateApp(pid); };
    a.openGroupPopover = [this](const std::string& bundleID) {
        const auto button = groupedButtons_.find(bundleID);
        if (button != groupedButtons_.end()) openGroupPopover(*button->second);
    };
    a.closeGroupPopover = [this] { closeGroupPopover(); };
    a.pinReveal = reveal_.pinReveal;
    a.unpinReveal = reveal_.unpinReveal;
    return a;
}

GroupPopoverBindings RunningStrip::popoverBindings() {
    const BarActions& actions = services_.actions;
    GroupPopoverBindings b;
    b.onActivate = [this](WindowID id) {
        services_.actions.onActivate(id);
        groupPopover_.close();
    };
    b.onClose = actions.onClose;
    b.onPinApp = actions.onPinApp;
    b.onMoveWindow = actions.onMoveWindow;
    b.app = actions.app;
    b.otherScreensProvider = [this] { return services_.actions.otherScreens(screenID_); };
    // The rows speak for their group's button, so that the list stays open on the way to them.
    b.onRowDragEntered = [this](WindowID id, const ui::DragPasteboard& pasteboard) {
        const auto button = groupedButtons_.find(popoverGroup_);
        if (button != groupedButtons_.end())
            dragHover_.dragEntered(button->second->buttonID(), WindowTarget{id}, pasteboard);
    };
    b.onRowDragExited = [this](WindowID) {
        const auto button = groupedButtons_.find(popoverGroup_);
        if (button != groupedButtons_.end()) dragHover_.dragExited(button->second->buttonID());
    };
    b.onRowDragEnded = [this] { dragHover_.dragEnded(); };
    b.onWillShow = reveal_.pinReveal;
    b.onDidClose = reveal_.unpinReveal;
    return b;
}

void RunningStrip::apply(const RunningStripContent& content, bool iconOnly) {
    const auto listed = std::ranges::find(content.groups, popoverGroup_, &RunningZoneLayout::Group::bundleID);
    groupPopover_.windowsChanged(listed != content.groups.end() ? listed->windows : std::vector<WindowSnapshot>{});
    dropMissing(content);
    size_t index = 0;
    for (const RunningZoneLayout::Group& group : content.groups)
        runningStack_.insertArrangedSubview(groupedButton(group), index++);
    for (const WindowSnapshot& window : content.buttons)
        runningStack_.insertArrangedSubview(windowButton(window, window.isWindowless && iconOnly), index++);
    isGrouped_ = content.isGrouped;
    shownWindows_.clear();
    for (const RunningZoneLayout::Group& group : content.groups)
        for (const WindowSnapshot& window : group.windows) shownWindows_.push_back(window.id);
    for (const WindowSnapshot& window : content.buttons)
        if (!window.isWindowless) shownWindows_.push_back(window.id);
    runningStack_.contentsChanged();
}

void RunningStrip::retitle(const WindowSnapshot& window) {
    const auto button = windowButtons_.find(window.id);
    if (button != windowButtons_.end()) button->second->update(window);
    const auto group = isGrouped_ ? groupedButtons_.find(RunningZoneLayout::groupKey(window)) : groupedButtons_.end();
    if (group != groupedButtons_.end()) group->second->retitle(window);
    groupPopover_.retitle(window);
}

bool RunningStrip::shows(const WindowID& id) const {
    return windowButtons_.contains(id) || std::ranges::count(shownWindows_, id) > 0;
}

void RunningStrip::dropMissing(const RunningStripContent& content) {
    std::unordered_set<WindowID> windows;
    for (const WindowSnapshot& window : content.buttons) windows.insert(window.id);
    std::erase_if(windowButtons_, [&](const auto& entry) { return !windows.contains(entry.first); });
    std::unordered_set<std::string> groups;
    for (const RunningZoneLayout::Group& group : content.groups) groups.insert(group.bundleID);
    std::erase_if(groupedButtons_, [&](const auto& entry) { return !groups.contains(entry.first); });
}

WindowButton& RunningStrip::windowButton(const WindowSnapshot& snapshot, bool iconOnly) {
    std::unique_ptr<WindowButton>& button = windowButtons_[snapshot.id];
    if (!button) {
        button = std::make_unique<WindowButton>(buttonServices(), snapshot, iconOnly, bindings(snapshot));
        button->setActive(focused_ == snapshot.id);
        button->setNowPlaying(isNowPlaying(snapshot.bundleID));
        return *button;
    }
    button->update(snapshot);
    button->setIconOnly(iconOnly);
    button->setNowPlaying(isNowPlaying(snapshot.bundleID));
    return *button;
}

GroupedAppButton& RunningStrip::groupedButton(const RunningZoneLayout::Group& group) {
    std::unique_ptr<GroupedAppButton>& button = groupedButtons_[group.bundleID];
    if (!button) {
        GroupedAppButtonBindings b;
        b.onClick = [this](GroupedAppButton& clicked) { groupClicked(clicked); };
        b.onPin = services_.actions.onPinApp;
        b.app = services_.actions.app;
        b.bordersProvider = [&settings = services_.settings] { return settings.showButtonBorders.value(); };
        b.accentProvider = [&settings = services_.settings] { return AccentResolver::resolved(settings); };
        b.dragHoverProvider = [this] { return &dragHover_; };
        b.nowPlayingControls = nowPlayingControls_;
        b.reveal = reveal_;
        button =
            std::make_unique<GroupedAppButton>(buttonServices(), services_.mint.next(), group.bundleID, std::move(b));
    }
    button->update(group.windows);
    button->setNowPlaying(isNowPlaying(group.bundleID));
    return *button;
}

void RunningStrip::groupClicked(GroupedAppButton& button) {
    onClick();
    const bool isItsListOpen = groupPopover_.isShown() && popoverGroup_ == button.bundleID();
    if (isItsListOpen) return groupPopover_.close();
    if (button.windows().size() > 1) return openGroupPopover(button);
    groupPopover_.close();
    services_.actions.onClickRunningWindow(button.windows().front().id);
}

void RunningStrip::openGroupPopover(GroupedAppButton& button) {
    popoverGroup_ = button.bundleID();
    groupPopover_.show(button, button.windows(), services_.settings.barEdge.value());
}

WindowButtonBindings RunningStrip::bindings(const WindowSnapshot& snapshot) {
    const BarActions& actions = services_.actions;
    SettingsStore& settings = services_.settings;
    WindowButtonBindings b;
    if (const auto click = bound(actions.onClickRunningWindow, snapshot.id))
        b.onClick = [this, click] {
            onClick();
            click();
        };
    b.onMinimize = bound(actions.onMinimizeWindow, snapshot.id);
    b.onClose = bound(actions.onClose, snapshot.id);
    if (snapshot.bundleID) b.onPin = bound(actions.onPinApp, snapshot.pid);
    b.onMoveTo = bound(actions.onMoveWindow, snapshot.id);
    b.app = actions.app;
    b.otherScreensProvider = [this] { return services_.actions.otherScreens(screenID_); };
    b.widthProvider = [&settings] {
        return RunningZoneLayout::resolveWindowButtonWidth(settings.windowButtonWidthMode.value(),
                                                           settings.windowButtonCustomWidth.value());
    };
    b.bordersProvider = [&settings] { return settings.showButtonBorders.value(); };
    b.activeStyleProvider = [&settings] { return settings.activeButtonStyle.value(); };
    b.accentProvider = [&settings] { return AccentResolver::resolved(settings); };
    b.barEdgeProvider = [&settings] { return settings.barEdge.value(); };
    b.dragHoverProvider = [this] { return &dragHover_; };
    b.nowPlayingControls = nowPlayingControls_;
    b.reveal = reveal_;
    return b;
}

void RunningStrip::wheelTurned(double notches) {
    const int step = wheel_.turned(notches, services_.mainLoop.now());
    const auto at = std::ranges::find(shownWindows_, focused_);
    const auto focused = at == shownWindows_.end() ? std::nullopt : std::optional<size_t>(at - shownWindows_.begin());
    if (const auto next = FocusWheel::next(focused, shownWindows_.size(), step))
        services_.actions.onActivate(shownWindows_[*next]);
}

void RunningStrip::dragEnded() {
    dragHover_.dragEnded();
    runningStack_.draggingEnded();
}

void RunningStrip::applyFocus(const std::optional<WindowID>& focused) {
    const auto mark = [this](const std::optional<WindowID>& id, bool active) {
        const auto button = id ? windowButtons_.find(*id) : windowButtons_.end();
        if (button != windowButtons_.end()) button->second->setActive(active);
    };
    mark(focused_, false);
    focused_ = focused;
    mark(focused_, true);
}

bool RunningStrip::isNowPlaying(const std::optional<std::string>& bundleID) const {
    return bundleID && bundleID == lastNowPlayingBundleID_;
}

void RunningStrip::applyNowPlaying(const std::optional<std::string>& bundleID) {
    lastNowPlayingBundleID_ = bundleID;
    for (const auto& [id, button] : windowButtons_) button->setNowPlaying(isNowPlaying(button->snapshot().bundleID));
    for (const auto& [key, button] : groupedButtons_) button->setNowPlaying(isNowPlaying(key));
}

void RunningStrip::applyAppearance() {
    for (const auto& [id, button] : windowButtons_) button->applyAppearance();
    for (const auto& [key, button] : groupedButtons_) button->applyAppearance();
}

void RunningStrip::applyWidth() {
    for (const auto& [id, button] : windowButtons_) button->applyWidthConstraint();
}

}  // namespace morvel
