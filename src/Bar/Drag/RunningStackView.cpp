#include "Bar/Drag/RunningStackView.h"

#include <utility>

#include "Bar/Drag/RunningWindowDrag.h"

namespace morvel {

RunningStackView::RunningStackView(MainLoop& mainLoop, double spacing, RunningStackHooks hooks)
    : LiveReorderStackView(mainLoop, Axis::Horizontal, spacing), hooks_(std::move(hooks)) {
    setAccessibilityLabel("Windows");
}

bool RunningStackView::acceptsDrag(const ui::DragPasteboard& pasteboard) const {
    return RunningWindowDrag::isIn(pasteboard);
}

ui::View* RunningStackView::resolveSource(const ui::DragPasteboard& pasteboard) {
    const auto id = RunningWindowDrag::window(pasteboard);
    ui::View* button = id ? hooks_.ownButton(*id) : nullptr;
    if (button) draggedID_ = id;
    return button;
}

std::unique_ptr<ui::View> RunningStackView::resolveForeignSource(const ui::DragPasteboard& pasteboard) {
    return hooks_.placeholder(pasteboard);
}

bool RunningStackView::performDragOperation(const ui::DragInfo& info) {
    const auto id = RunningWindowDrag::window(info.pasteboard);
    const auto index = finishDrag();
    return id && index && hooks_.onDrop(*id, *index);
}

bool RunningStackView::scrollWheel(const ui::WheelEvent& event) {
    hooks_.onWheel(event.notches);
    return true;
}

}  // namespace morvel
