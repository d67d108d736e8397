#include "Bar/Buttons/GroupRowButton.h"

#include <algorithm>
#include <utility>

#include "Bar/Buttons/ButtonGeometry.h"
#include "Bar/Buttons/ButtonTexts.h"
#include "Bar/Buttons/WindowMenus.h"
#include "Bar/Drag/RunningWindowDrag.h"
#include "Theme/ButtonAppearance.h"

namespace morvel {

namespace {

constexpr double kInset = 8;  // before the icon, between icon, title and close button, and after it
constexpr double kCloseSize = 16;
constexpr double kCloseSymbolSize = 14;

}  // namespace

GroupRowButton::GroupRowButton(ButtonServices services, const WindowSnapshot& snapshot, GroupRowBindings bindings)
    : toolkit_(services.toolkit),
      bindings_(std::move(bindings)),
      iconView_(services.iconCache),
      titleLabel_(services.toolkit, ButtonGeometry::kTitleFont) {
    closeButton_.imageView().setImage(services.icons.symbol("xmark.circle.fill", kCloseSymbolSize));
    closeButton_.imageView().setTint(ui::kSystemRedColor);
    closeButton_.setTooltip("Close window");
    closeButton_.setAccessibilityLabel("Close window");
    closeButton_.onClick = bindings_.onCloseClicked;
    addSubview(iconView_);
    addSubview(titleLabel_);
    addSubview(closeButton_);
    update(snapshot);
}

void GroupRowButton::update(const WindowSnapshot& snapshot) {
    snapshot_ = snapshot;
    std::string label = buttonTexts(snapshot_).label;
    setAccessibilityLabel(label);
    titleLabel_.setText(std::move(label));
    iconView_.show(snapshot_.bundleID, snapshot_.pid);
}

Size GroupRowButton::intrinsicSize() const {
    return {0, kHeight};  // as wide as the list
}

void GroupRowButton::mouseUp(const ui::MouseEvent& event) {
    if (isReleasedInside(event)) {
        accessibilityPress();
    } else if (isReleasedInside(event, ui::MouseButton::Middle)) {
        const auto close = bindings_.onCloseClicked;  // destroys this row
        close();
    }
}

bool GroupRowButton::accessibilityPress() {
    const auto activate = bindings_.onActivate;  // may close the popover and with it destroy this row
    activate();
    return true;
}

void GroupRowButton::rightMouseDown(const ui::MouseEvent& event) {
    ui::Menu menu = WindowMenus::forWindow(snapshot_.appName, bindings_.otherScreensProvider(),
                                           {.close = bindings_.onClose,
                                            .quit = bindings_.onQuit,
                                            .pin = snapshot_.bundleID ? bindings_.onPin : nullptr,
                                            .moveTo = bindings_.onMoveTo});
    toolkit_.popUpMenu(std::move(menu), *this, event.location, bindings_.reveal.hold());
}

void GroupRowButton::applyAppearance() {
    apply(rowAppearance(isHovered() || isDraggedOver_), *this);
}

bool GroupRowButton::acceptsDrag(const ui::DragPasteboard& pasteboard) const {
    return !RunningWindowDrag::isIn(pasteboard);
}

ui::DragOperation GroupRowButton::draggingEntered(const ui::DragInfo& info) {
    isDraggedOver_ = true;
    applyAppearance();
    bindings_.onDragEntered(info.pasteboard);
    return ui::DragOperation::None;
}

void GroupRowButton::draggingExited() {
    isDraggedOver_ = false;
    applyAppearance();
    bindings_.onDragExited();
}

void GroupRowButton::draggingEnded() {
    const auto ended = bindings_.onDragEnded;  // closes the popover and with it destroys this row
    ended();
}

void GroupRowButton::layout() {
    const double width = frame().width;
    const double height = frame().height;
    const double iconSize = ButtonGeometry::kIconSize;
    iconView_.setFrame({kInset, (height - iconSize) / 2, iconSize, iconSize});
    const double closeX = width - kInset - kCloseSize;
    closeButton_.setFrame({closeX, (height - kCloseSize) / 2, kCloseSize, kCloseSize});
    const double labelX = iconView_.frame().maxX() + kInset;
    const double labelHeight = titleLabel_.intrinsicSize().height;
    titleLabel_.setFrame({labelX, (height - labelHeight) / 2, std::max(0.0, closeX - kInset - labelX), labelHeight});
}

}  // namespace morvel
