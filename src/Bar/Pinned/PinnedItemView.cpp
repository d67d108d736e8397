#include "Bar/Pinned/PinnedItemView.h"

#include <utility>

#include "Bar/Pinned/PinnedItemContextMenu.h"
#include "Bar/Pinned/PinnedItemDrag.h"

namespace morvel {

namespace {

/// Of the view whose picture is being dragged.
constexpr double kDraggedAlpha = 0.3;

}  // namespace

PinnedItemView::PinnedItemView(ButtonServices services, const PinnedItem& item, ProcessID process,
                               PinnedItemActions actions)
    : toolkit_(services.toolkit), pinnedItem_(item), actions_(std::move(actions)), iconView_(services.iconCache) {
    setTooltip(item.displayName);
    setAccessibilityLabel(item.displayName);
    if (item.kind == PinnedItem::Kind::App) iconView_.show(item.identifier, process);
    addSubview(iconView_);
}

void PinnedItemView::mouseDown(const ui::MouseEvent& event) {
    if (event.button == ui::MouseButton::Left) press_.down(event.location);
}

void PinnedItemView::mouseDragged(const ui::MouseEvent& event) {
    if (event.button != ui::MouseButton::Left || press_.drag(event.location) != PressOutcome::DragStart) return;
    isDragged_ = true;
    toolkit_.beginDrag(*this, PinnedItemDrag::item(pinnedItem_), lifetime_.whileAlive([this](ui::DragOperation) {
        isDragged_ = false;
        showAlpha();
    }));
    showAlpha();  // only now: the picture is of the view as it was
}

void PinnedItemView::showAlpha() {
    setAlpha(isDragged_ ? kDraggedAlpha : 1);
}

void PinnedItemView::mouseUp(const ui::MouseEvent& event) {
    if (event.button == ui::MouseButton::Left && press_.up() == PressOutcome::Click) accessibilityPress();
}

bool PinnedItemView::accessibilityPress() {
    if (!actions_.onClick) return false;
    const auto click = actions_.onClick;  // may destroy this view
    click();
    return true;
}

void PinnedItemView::rightMouseDown(const ui::MouseEvent& event) {
    toolkit_.popUpMenu(
        PinnedItemContextMenu::make(pinnedItem_, actions_.onUnpin, actions_.onLaunchNewInstance, actions_.onShow),
        *this, event.location, actions_.reveal.hold());
}

}  // namespace morvel
