#include "Bar/Pinned/PinnedStackView.h"

#include <algorithm>
#include <utility>

#include "Bar/Drag/RunningWindowDrag.h"
#include "Bar/Pinned/PinnedItemDrag.h"

namespace morvel {

PinnedStackView::PinnedStackView(MainLoop& mainLoop, Axis axis, double spacing, PinnedStackHooks hooks)
    : LiveReorderStackView(mainLoop, axis, spacing), hooks_(std::move(hooks)) {}

void PinnedStackView::arrange(const std::vector<ui::View*>& views, size_t leading, size_t trailing) {
    leading_ = leading;
    trailing_ = trailing;
    for (size_t i = 0; i < views.size(); ++i) insertArrangedSubview(*views[i], i);
    contentsChanged();
    intrinsicSizeChanged();
}

size_t PinnedStackView::dropIndex(Point<ViewSpace> inRoot) const {
    return insertionIndex(inRoot);
}

bool PinnedStackView::acceptsDrag(const ui::DragPasteboard& pasteboard) const {
    return PinnedItemDrag::isIn(pasteboard) || RunningWindowDrag::isIn(pasteboard);
}

bool PinnedStackView::performDragOperation(const ui::DragInfo& info) {
    const auto item = hooks_.draggedItem(info.pasteboard);
    if (!item) draggingExited();  // gone while it was dragged; the others take their places again
    const auto index = finishDrag();
    if (!index) return false;
    const auto drop = hooks_.onDrop;
    return drop(*item, *index - std::min(*index, leading_));
}

std::vector<ui::View*> PinnedStackView::reorderableSubviews() const {
    std::vector<ui::View*> views = arrangedSubviews();
    views.resize(views.size() - std::min(trailing_, views.size()));
    views.erase(views.begin(), views.begin() + static_cast<std::ptrdiff_t>(std::min(leading_, views.size())));
    return views;
}

ui::View* PinnedStackView::resolveSource(const ui::DragPasteboard& pasteboard) {
    const auto item = hooks_.draggedItem(pasteboard);
    ui::View* own = item ? hooks_.ownView(item->id()) : nullptr;
    if (own) draggedID_ = item->id();
    return own;
}

std::unique_ptr<ui::View> PinnedStackView::resolveForeignSource(const ui::DragPasteboard& pasteboard) {
    const auto item = hooks_.draggedItem(pasteboard);
    return item ? hooks_.placeholder(*item) : nullptr;
}

}  // namespace morvel
