#include "Bar/Pinned/PinnedAppButton.h"

#include <utility>

#include "Bar/Buttons/ButtonAppearance.h"
#include "Bar/Buttons/ButtonGeometry.h"
#include "Bar/Pinned/FileDrag.h"
#include "Bar/Pinned/PinnedItemContextMenu.h"

namespace morvel {

namespace {

constexpr double kIconSize = 22;
constexpr double kDotSize = 4;
constexpr double kDotBottom = 0.5;  // between the icon and the button's edge, touching neither

}  // namespace

PinnedAppButton::PinnedAppButton(ButtonServices services, const PinnedItem& item, ProcessID process,
                                 PinnedAppButtonBindings bindings)
    : toolkit_(services.toolkit),
      pinnedItem_(item),
      bindings_(std::move(bindings)),
      iconView_(services, item, process),
      press_(*this, services.toolkit) {
    setCornerRadius(ButtonGeometry::kCornerRadius);
    setTooltip(item.displayName);
    setAccessibilityLabel(item.displayName);
    runningDot_.setCornerRadius(kDotSize / 2);
    addSubview(iconView_);
    addSubview(runningDot_);
    refreshAccent();
    applyAppearance();
}

void PinnedAppButton::setRunning(bool running) {
    if (std::exchange(isRunning_, running) != running) applyAppearance();
}

void PinnedAppButton::refreshAccent() {
    runningDot_.setBackground(bindings_.accentProvider());
}

void PinnedAppButton::applyAppearance() {
    runningDot_.setHidden(!showsRunningDot(pinnedItem_.kind == PinnedItem::Kind::App, isRunning_));
    apply(appButtonAppearance(isHovered_, bindings_.bordersProvider()), *this);
}

Size PinnedAppButton::intrinsicSize() const {
    return {kWidth, ButtonGeometry::kHeight};
}

void PinnedAppButton::mouseUp(const ui::MouseEvent& event) {
    if (press_.mouseUp(event)) accessibilityPress();
}

bool PinnedAppButton::accessibilityPress() {
    if (!bindings_.actions.onClick) return false;
    const auto click = bindings_.actions.onClick;  // the click may destroy this button
    click();
    return true;
}

void PinnedAppButton::rightMouseDown(const ui::MouseEvent& event) {
    const PinnedItemActions& actions = bindings_.actions;
    if (bindings_.pinReveal) bindings_.pinReveal();
    toolkit_.popUpMenu(
        PinnedItemContextMenu::make(pinnedItem_, actions.onUnpin, actions.onLaunchNewInstance, actions.onShow), *this,
        event.location, [unpin = bindings_.unpinReveal] {
            if (unpin) unpin();
        });
}

void PinnedAppButton::mouseEntered(const ui::MouseEvent&) {
    isHovered_ = true;
    applyAppearance();
}

void PinnedAppButton::mouseExited() {
    isHovered_ = false;
    applyAppearance();
}

bool PinnedAppButton::acceptsDrag(const ui::DragPasteboard& pasteboard) const {
    return FileDrag::isIn(pasteboard);
}

ui::DragOperation PinnedAppButton::draggingEntered(const ui::DragInfo& info) {
    return FileDrag::operation(info.pasteboard);
}

bool PinnedAppButton::performDragOperation(const ui::DragInfo& info) {
    const auto drop = bindings_.onFileDrop;
    return drop && drop(info);
}

void PinnedAppButton::layout() {
    const double width = frame().width;
    const double height = frame().height;
    iconView_.setFrame({(width - kIconSize) / 2, (height - kIconSize) / 2, kIconSize, kIconSize});
    runningDot_.setFrame({(width - kDotSize) / 2, height - kDotBottom - kDotSize, kDotSize, kDotSize});
}

}  // namespace morvel
