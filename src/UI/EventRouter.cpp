#include "UI/EventRouter.h"

#include <algorithm>
#include <utility>

namespace morvel::ui {

namespace {

/// Every visible view under the point for which `wanted` holds, outermost first.
template <class Wanted>
void collect(View& view, Point<ViewSpace> point, std::vector<View*>& found, const Wanted& wanted) {
    if (view.isHidden() || !view.bounds().contains(point)) return;
    if (wanted(view)) found.push_back(&view);
    for (View* child : view.subviews())
        collect(*child, {point.x - child->frame().x, point.y - child->frame().y}, found, wanted);
}

}  // namespace

void EventRouter::pointerMoved(Point<ViewSpace> location) {
    inside_ = true;
    location_ = location;
    updateHover();
    // A window has one such view at most.
    const auto mover = std::ranges::find_if(hovered_, &View::tracksMoves);
    if (mover != hovered_.end()) (*mover)->mouseMoved({MouseButton::Left, location});
    if (pressed_) pressed_->mouseDragged({pressedButton_, location});
}

void EventRouter::pointerExited() {
    inside_ = false;
    updateHover();
}

bool EventRouter::buttonPressed(const MouseEvent& event) {
    location_ = event.location;
    View* view = root_.hitTest(event.location);
    if (!view) return false;
    if (event.button == MouseButton::Right) {
        view->rightMouseDown(event);
        return true;
    }
    pressed_ = view;
    pressedButton_ = event.button;
    view->mouseDown(event);
    return true;
}

void EventRouter::buttonReleased(const MouseEvent& event) {
    if (!pressed_ || event.button != pressedButton_) return;
    std::exchange(pressed_, nullptr)->mouseUp(event);
}

bool EventRouter::wheelTurned(const WheelEvent& event) {
    std::vector<View*> found;
    collect(root_, event.location, found, [](const View&) { return true; });
    for (View* view = found.empty() ? nullptr : found.back(); view; view = view->parent())
        if (view->scrollWheel(event)) return true;
    return false;
}

DragOperation EventRouter::dragMoved(const DragInfo& info) {
    if (!std::exchange(isDragInside_, true)) root_.windowDragEntered(info);
    View* target = root_.dragTarget(info.location, info.pasteboard);
    if (target == dragTarget_) return target ? target->draggingUpdated(info) : DragOperation::None;
    if (View* left = std::exchange(dragTarget_, nullptr)) left->draggingExited();
    // Leaving may have changed what is under the pointer.
    target = root_.dragTarget(info.location, info.pasteboard);
    if (!target) return DragOperation::None;
    dragTarget_ = lastDragTarget_ = target;
    return target->draggingEntered(info);
}

void EventRouter::dragExited() {
    if (View* left = std::exchange(dragTarget_, nullptr)) left->draggingExited();
    if (std::exchange(isDragInside_, false)) root_.windowDragExited();
}

bool EventRouter::dragDropped(const DragInfo& info) {
    View* target = std::exchange(dragTarget_, nullptr);
    const bool isTaken = target && target->performDragOperation(info);
    if (std::exchange(isDragInside_, false)) root_.windowDragExited();
    return isTaken;
}

void EventRouter::dragEnded() {
    dragExited();
    pressed_ = nullptr;  // a button that was held for the drag was released elsewhere
    if (View* last = std::exchange(lastDragTarget_, nullptr)) last->draggingEnded();
    root_.windowDragEnded();
}

void EventRouter::viewWillDetach(View& view) {
    if (dragTarget_ == &view) dragTarget_ = nullptr;
    if (lastDragTarget_ == &view) lastDragTarget_ = nullptr;
    if (pressed_ == &view) pressed_ = nullptr;
    std::erase(hovered_, &view);
    std::erase(entering_, &view);
}

void EventRouter::layoutChanged() {
    if (inside_) updateHover();
}

View* EventRouter::tooltipView() const {
    if (!inside_) return nullptr;
    std::vector<View*> found;
    collect(root_, location_, found, [](const View& view) { return !view.tooltip().empty(); });
    return found.empty() ? nullptr : found.back();
}

void EventRouter::updateHover() {
    entering_.clear();
    if (inside_) collect(root_, location_, entering_, [](const View& view) { return view.tracksHover(); });
    // Handlers may take views away, so each step starts from the lists as they then are (see viewWillDetach).
    const auto isUnderPointer = [this](View* view) { return std::ranges::count(entering_, view) > 0; };
    while (true) {
        const auto left = std::find_if_not(hovered_.rbegin(), hovered_.rend(), isUnderPointer);
        if (left == hovered_.rend()) break;
        View* view = *left;
        std::erase(hovered_, view);
        view->mouseExited();
    }
    while (!entering_.empty()) {
        View* view = entering_.front();
        entering_.erase(entering_.begin());
        if (std::ranges::count(hovered_, view)) continue;
        hovered_.push_back(view);
        view->mouseEntered({MouseButton::Left, location_});
    }
}

}  // namespace morvel::ui
