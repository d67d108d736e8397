#include "Bar/Pinned/PinnedOverflowRow.h"

#include <algorithm>
#include <utility>

#include "Bar/Buttons/ButtonAppearance.h"
#include "Bar/Buttons/ButtonGeometry.h"
#include "Bar/Pinned/PinnedItemContextMenu.h"

namespace morvel {

namespace {

constexpr double kInset = 8;  // before the icon, between icon and title, and after the title

}  // namespace

PinnedOverflowRow::PinnedOverflowRow(ButtonServices services, const PinnedItem& item, ProcessID process,
                                     PinnedItemActions actions)
    : toolkit_(services.toolkit),
      pinnedItem_(item),
      actions_(std::move(actions)),
      iconView_(services, item, process),
      titleLabel_(services.toolkit, {.size = ButtonGeometry::kTitleFontSize}),
      press_(*this, services.toolkit) {
    titleLabel_.setText(item.displayName);
    setTooltip(item.displayName);
    setAccessibilityLabel(item.displayName);
    addSubview(iconView_);
    addSubview(titleLabel_);
}

void PinnedOverflowRow::mouseUp(const ui::MouseEvent& event) {
    if (press_.mouseUp(event)) accessibilityPress();
}

bool PinnedOverflowRow::accessibilityPress() {
    if (!actions_.onClick) return false;
    const auto click = actions_.onClick;  // may close the list and with it destroy this row
    click();
    return true;
}

void PinnedOverflowRow::rightMouseDown(const ui::MouseEvent& event) {
    ui::Menu menu =
        PinnedItemContextMenu::make(pinnedItem_, actions_.onUnpin, actions_.onLaunchNewInstance, actions_.onShow);
    toolkit_.popUpMenu(std::move(menu), *this, event.location, [] {});
}

void PinnedOverflowRow::mouseEntered(const ui::MouseEvent&) {
    apply(rowAppearance(true), *this);
}

void PinnedOverflowRow::mouseExited() {
    apply(rowAppearance(false), *this);
}

void PinnedOverflowRow::layout() {
    const double height = frame().height;
    const double iconSize = ButtonGeometry::kIconSize;
    iconView_.setFrame({kInset, (height - iconSize) / 2, iconSize, iconSize});
    const double labelX = iconView_.frame().maxX() + kInset;
    const double labelHeight = titleLabel_.intrinsicSize().height;
    titleLabel_.setFrame(
        {labelX, (height - labelHeight) / 2, std::max(0.0, frame().width - kInset - labelX), labelHeight});
}

}  // namespace morvel
