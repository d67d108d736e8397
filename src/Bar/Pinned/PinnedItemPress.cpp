#include "Bar/Pinned/PinnedItemPress.h"

#include "Bar/Pinned/PinnedItemDrag.h"
#include "UI/View.h"

namespace morvel {

namespace {

/// Of the view whose picture is being dragged.
constexpr double kDraggedAlpha = 0.3;

}  // namespace

void PinnedItemPress::mouseDown(const ui::MouseEvent& event) {
    if (event.button == ui::MouseButton::Left) press_.down(event.location);
}

void PinnedItemPress::mouseDragged(const ui::MouseEvent& event, const PinnedItem& item) {
    if (event.button != ui::MouseButton::Left || press_.drag(event.location) != PressOutcome::DragStart) return;
    isDragged_ = true;
    toolkit_.beginDrag(view_, PinnedItemDrag::item(item), lifetime_.whileAlive([this](ui::DragOperation) {
        isDragged_ = false;
        showAlpha();
    }));
    showAlpha();  // only now: the picture is of the view as it was
}

void PinnedItemPress::showAlpha() {
    view_.setAlpha(isDragged_ ? kDraggedAlpha : 1);
}

bool PinnedItemPress::mouseUp(const ui::MouseEvent& event) {
    return event.button == ui::MouseButton::Left && press_.up() == PressOutcome::Click;
}

}  // namespace morvel
