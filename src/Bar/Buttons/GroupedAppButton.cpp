#include "Bar/Buttons/GroupedAppButton.h"

#include <algorithm>
#include <utility>

#include "Bar/Buttons/ButtonGeometry.h"
#include "Bar/Buttons/ButtonTexts.h"
#include "Bar/Buttons/WindowMenus.h"
#include "Bar/Drag/RunningWindowDrag.h"
#include "Bar/Layout/RunningZoneLayout.h"
#include "Theme/ButtonAppearance.h"

namespace morvel {

namespace {

constexpr double kIconSize = 24;
/// From the button's right and lower edge to the badge's: it overlaps the icon's corner without leaving the button,
/// and grows to the left with its number.
constexpr double kBadgeTrailing = 2;
constexpr double kBadgeBottom = 1;
/// How far the now-playing badge stands out of the icon's upper right corner; the lower one is the count's.
constexpr double kOverlayOutset = 2;

/// Of an application that runs several times, the process that a command is for: the first that still runs.
template <class Act>
std::function<void()> onRunning(std::vector<ProcessID> pids, const AppActions& app, Act act) {
    return [pids = std::move(pids), isRunning = app.isRunning, act = std::move(act)] {
        const auto pid = std::ranges::find_if(pids, isRunning);
        if (pid != pids.end()) act(*pid);
    };
}

}  // namespace

GroupedAppButton::GroupedAppButton(ButtonServices services, WindowID buttonID, std::string bundleID,
                                   GroupedAppButtonBindings bindings)
    : toolkit_(services.toolkit),
      buttonID_(buttonID),
      bundleID_(std::move(bundleID)),
      bindings_(std::move(bindings)),
      iconView_(services.iconCache),
      countBadge_(services.toolkit),
      nowPlayingOverlay_(services.icons),
      nowPlayingHover_(*this, bindings_.nowPlayingControls) {
    setCornerRadius(ButtonGeometry::kCornerRadius);
    addSubview(iconView_);
    addSubview(countBadge_);
    addSubview(nowPlayingOverlay_);
    applyAppearance();
}

void GroupedAppButton::update(std::vector<WindowSnapshot> windows) {
    windows_ = std::move(windows);
    countBadge_.setCount(windows_.size());
    if (windows_.empty()) return;
    const WindowSnapshot& first = windows_.front();
    setTooltip(first.appName);
    setAccessibilityLabel(groupAccessibilityLabel(first.appName, windows_.size()));
    iconView_.show(first.bundleID, first.pid);
}

void GroupedAppButton::retitle(const WindowSnapshot& window) {
    const auto found = std::ranges::find(windows_, window.id, &WindowSnapshot::id);
    if (found != windows_.end()) *found = window;
}

void GroupedAppButton::setNowPlaying(bool nowPlaying) {
    if (std::exchange(isNowPlaying_, nowPlaying) == nowPlaying) return;
    nowPlayingOverlay_.setVisible(nowPlaying);
    if (!nowPlaying) nowPlayingHover_.cancel();
}

void GroupedAppButton::applyAppearance() {
    apply(appButtonAppearance(isHovered(), bindings_.bordersProvider()), *this);
    countBadge_.setColor(bindings_.accentProvider());
}

Size GroupedAppButton::intrinsicSize() const {
    return {RunningZoneLayout::kGroupedButtonWidth, ButtonGeometry::kHeight};
}

void GroupedAppButton::mouseDown(const ui::MouseEvent& event) {
    nowPlayingHover_.pressed();
    if (event.button == ui::MouseButton::Left) accessibilityPress();
}

bool GroupedAppButton::accessibilityPress() {
    if (!bindings_.onClick) return false;
    const auto click = bindings_.onClick;  // the click may destroy this button
    click(*this);
    return true;
}

void GroupedAppButton::rightMouseDown(const ui::MouseEvent& event) {
    nowPlayingHover_.pressed();
    if (windows_.empty()) return;
    toolkit_.popUpMenu(contextMenu(), *this, event.location, bindings_.reveal.hold());
}

void GroupedAppButton::mouseEntered(const ui::MouseEvent& event) {
    ButtonView::mouseEntered(event);
    if (isNowPlaying_) nowPlayingHover_.entered(bundleID_);
}

void GroupedAppButton::mouseExited() {
    ButtonView::mouseExited();
    nowPlayingHover_.cancel();
}

bool GroupedAppButton::acceptsDrag(const ui::DragPasteboard& pasteboard) const {
    return !RunningWindowDrag::isIn(pasteboard);
}

ui::DragOperation GroupedAppButton::draggingEntered(const ui::DragInfo& info) {
    auto* hover = bindings_.dragHoverProvider();
    if (!hover || windows_.empty()) return ui::DragOperation::None;
    // One window needs no list, as with a click.
    const ButtonKind kind =
        windows_.size() == 1 ? ButtonKind(WindowTarget{windows_.front().id}) : ButtonKind(GroupedTarget{bundleID_});
    hover->dragEntered(buttonID_, kind, info.pasteboard);
    return ui::DragOperation::None;
}

void GroupedAppButton::draggingExited() {
    if (auto* hover = bindings_.dragHoverProvider()) hover->dragExited(buttonID_);
}

void GroupedAppButton::draggingEnded() {
    if (auto* hover = bindings_.dragHoverProvider()) hover->dragEnded();
}

void GroupedAppButton::layout() {
    const double width = frame().width;
    const double height = frame().height;
    const Rect<ViewSpace> icon{(width - kIconSize) / 2, (height - kIconSize) / 2, kIconSize, kIconSize};
    iconView_.setFrame(icon);
    const Size badge = countBadge_.intrinsicSize();
    countBadge_.setFrame(
        {width - kBadgeTrailing - badge.width, height - kBadgeBottom - badge.height, badge.width, badge.height});
    nowPlayingOverlay_.setFrame({icon.maxX() + kOverlayOutset - NowPlayingButtonOverlay::kSize,
                                 icon.minY() - kOverlayOutset, NowPlayingButtonOverlay::kSize,
                                 NowPlayingButtonOverlay::kSize});
}

ui::Menu GroupedAppButton::contextMenu() const {
    const WindowSnapshot& first = windows_.front();
    std::vector<ProcessID> pids;
    for (const WindowSnapshot& window : windows_)
        if (!std::ranges::count(pids, window.pid)) pids.push_back(window.pid);
    std::function<void()> pin;
    if (bindings_.onPin && first.bundleID) pin = [onPin = bindings_.onPin, pid = first.pid] { onPin(pid); };
    return WindowMenus::forApplication(
        first.appName,
        {.quit = onRunning(pids, bindings_.app, bindings_.app.quit),
         .forceQuit = onRunning(pids, bindings_.app, bindings_.app.forceQuit),
         .pin = std::move(pin),
         .showInFinder = [show = bindings_.app.showInFinder, bundleID = first.bundleID] { show(bundleID); }});
}

}  // namespace morvel
