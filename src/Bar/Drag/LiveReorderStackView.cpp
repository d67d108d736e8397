#include "Bar/Drag/LiveReorderStackView.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace morvel {

namespace {

constexpr Duration kMakeRoom = std::chrono::milliseconds(150);
constexpr double kPlaceholderAlpha = 0.3;

}  // namespace

LiveReorderStackView::LiveReorderStackView(MainLoop& mainLoop, Axis axis, double spacing)
    : StackView(axis, spacing), animator_(mainLoop, *this) {}

ui::DragOperation LiveReorderStackView::draggingEntered(const ui::DragInfo& info) {
    beginIfNeeded(info);
    return draggingSource_ ? ui::DragOperation::Move : ui::DragOperation::None;
}

ui::DragOperation LiveReorderStackView::draggingUpdated(const ui::DragInfo& info) {
    beginIfNeeded(info);
    if (!draggingSource_) return ui::DragOperation::None;
    moveSource(insertionIndex(info.location));
    return ui::DragOperation::Move;
}

void LiveReorderStackView::draggingExited() {
    if (draggingSource_ && originalIndex_) moveSource(*originalIndex_);
    clear();
}

void LiveReorderStackView::beginIfNeeded(const ui::DragInfo& info) {
    if (draggingSource_) return;
    if (ui::View* own = resolveSource(info.pasteboard)) {
        draggingSource_ = own;
        originalIndex_ = indexOfSource();
        draggedTo_ = originalIndex_.value_or(0);
        return;
    }
    foreignSource_ = resolveForeignSource(info.pasteboard);
    if (!foreignSource_) return;
    foreignSource_->setAlpha(kPlaceholderAlpha);
    const size_t index = insertionIndex(info.location);
    draggingSource_ = foreignSource_.get();
    moveSource(index);
    intrinsicSizeChanged();
}

std::optional<size_t> LiveReorderStackView::finishDrag() {
    if (!draggingSource_) return std::nullopt;
    const size_t index = indexOfSource().value_or(0);
    nextLayout_ = kMakeRoom;
    clear();
    return index;
}

void LiveReorderStackView::contentsChanged() {
    if (!draggingSource_) return;
    if (!isForeignSource()) {
        if (currentSource() != draggingSource_) return clear();  // its window is gone, or shown in another way
        originalIndex_ = indexOfSource();
    }
    insertArrangedSubview(*draggingSource_, draggedTo_);
}

void LiveReorderStackView::layout() {
    animator_.willLayout();
    StackView::layout();
    animator_.didLayout(std::exchange(nextLayout_, Duration{}));
}

// A neighbour that has made way is farther from the pointer than before, so views of different widths do not flutter.
size_t LiveReorderStackView::insertionIndex(Point<ViewSpace> inRoot) const {
    const bool isRow = axis() == Axis::Horizontal;
    const double position = isRow ? fromRoot(inRoot).x : fromRoot(inRoot).y;
    const std::vector<ui::View*> movable = reorderableSubviews();
    const std::vector<Rect<ViewSpace>> frames = arrangedFrames();  // not where they are on their way
    auto frame = frames.begin();
    size_t index = firstReorderableIndex();
    size_t others = 0;
    for (const ui::View* view : arrangedSubviews()) {
        const bool isShown = !view->isHidden();
        double middle = 0;
        if (isShown) middle = isRow ? frame->midX() : frame->midY();
        if (isShown) ++frame;
        if (view == draggingSource_) continue;
        ++others;
        if (isShown && std::ranges::count(movable, view) && middle < position) index = others;
    }
    return index;
}

std::optional<size_t> LiveReorderStackView::indexOfSource() const {
    const auto at = std::ranges::find(arrangedSubviews(), draggingSource_);
    if (at == arrangedSubviews().end()) return std::nullopt;
    return static_cast<size_t>(at - arrangedSubviews().begin());
}

void LiveReorderStackView::moveSource(size_t index) {
    draggedTo_ = index;
    if (indexOfSource() == index) return;
    nextLayout_ = kMakeRoom;
    insertArrangedSubview(*draggingSource_, index);
}

void LiveReorderStackView::clear() {
    draggingSource_ = nullptr;
    originalIndex_.reset();
    if (foreignSource_) {
        nextLayout_ = kMakeRoom;
        foreignSource_.reset();
        intrinsicSizeChanged();
    }
    sourceCleared();
}

}  // namespace morvel
