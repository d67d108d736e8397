#include "Bar/RunningStrip.h"

#include <algorithm>
#include <unordered_set>

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

RunningStrip::RunningStrip(const BarServices& services, DisplayID screenID, Reveal reveal)
    : services_(services),
      screenID_(screenID),
      reveal_(std::move(reveal)),
      runningStack_(ui::StackView::Axis::Horizontal, kRunningSpacing),
      groupPopover_(buttonServices(), popoverBindings()) {}

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
    b.onWillShow = reveal_.pin;
    b.onDidClose = reveal_.unpin;
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
        return *button;
    }
    button->update(snapshot);
    button->setIconOnly(iconOnly);
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
        b.pinReveal = reveal_.pin;
        b.unpinReveal = reveal_.unpin;
        button =
            std::make_unique<GroupedAppButton>(buttonServices(), services_.mint.next(), group.bundleID, std::move(b));
    }
    button->update(group.windows);
    return *button;
}

void RunningStrip::groupClicked(GroupedAppButton& button) {
    if (button.windows().size() == 1) return services_.actions.onClickRunningWindow(button.windows().front().id);
    popoverGroup_ = button.bundleID();
    groupPopover_.show(button, button.windows(), services_.settings.barEdge.value());
}

WindowButtonBindings RunningStrip::bindings(const WindowSnapshot& snapshot) const {
    const BarActions& actions = services_.actions;
    SettingsStore& settings = services_.settings;
    WindowButtonBindings b;
    b.onClick = bound(actions.onClickRunningWindow, snapshot.id);
    b.onMinimize = bound(actions.onMinimizeWindow, snapshot.id);
    b.onClose = bound(actions.onClose, snapshot.id);
    b.onPin = bound(actions.onPinApp, snapshot.pid);
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
    b.pinReveal = reveal_.pin;
    b.unpinReveal = reveal_.unpin;
    return b;
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

void RunningStrip::applyAppearance() {
    for (const auto& [id, button] : windowButtons_) button->applyAppearance();
    for (const auto& [key, button] : groupedButtons_) button->applyAppearance();
}

void RunningStrip::applyWidth() {
    for (const auto& [id, button] : windowButtons_) button->applyWidthConstraint();
}

}  // namespace morvel
