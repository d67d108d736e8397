#include "Bar/Pinned/PinnedOverflowReorderStack.h"

#include <chrono>
#include <utility>

namespace morvel {

namespace {

/// How near the upper or lower edge a drag lets more rows come.
constexpr double kEdge = 8;
constexpr Duration kEdgeInterval = std::chrono::milliseconds(150);

}  // namespace

PinnedOverflowReorderStack::PinnedOverflowReorderStack(MainLoop& mainLoop, PinnedStackHooks hooks, Scroll scroll)
    : PinnedStackView(mainLoop, Axis::Vertical, 0, std::move(hooks)), mainLoop_(mainLoop), scroll_(std::move(scroll)) {}

ui::DragOperation PinnedOverflowReorderStack::draggingUpdated(const ui::DragInfo& info) {
    const ui::DragOperation operation = PinnedStackView::draggingUpdated(info);
    if (operation != ui::DragOperation::None) scrollAtEdge(info.location);
    return operation;
}

void PinnedOverflowReorderStack::scrollAtEdge(Point<ViewSpace> inRoot) {
    const double y = parent()->fromRoot(inRoot).y;
    const double rows = y < kEdge ? -1 : y > parent()->bounds().height - kEdge ? 1 : 0;
    const Instant now = mainLoop_.now();
    if (rows == 0 || (scrolledAt_ && now - *scrolledAt_ < kEdgeInterval)) return;
    scrolledAt_ = now;
    scroll_(rows);
}

}  // namespace morvel
