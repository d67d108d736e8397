#include "Platform/Linux/UI/Drag/DragTracker.h"

#include <algorithm>
#include <utility>

#include "Platform/Linux/UI/ViewWindow.h"

namespace morvel::x11 {

namespace {

// Soon enough for the eye, and seldom enough to cost nothing.
constexpr Duration kRepeatPeriod = std::chrono::milliseconds(100);

}  // namespace

ui::DragOperation DragTracker::moved(ViewWindow& window, Point<RootSpace> location,
                                     const ui::DragPasteboard& pasteboard) {
    if (window_ != &window) exited();
    location_ = location;
    operation_ = ui::DragOperation::None;
    if (!isAlive(&window)) return operation_;
    window_ = &window;
    pasteboard_ = &pasteboard;
    hasBeenInside_ = true;
    if (!repeat_) repeat_ = context_.mainLoop().every(kRepeatPeriod, kRepeatPeriod, [this] { tellAgain(); });
    operation_ = window.router().dragMoved({window.inRootView(location), pasteboard});
    return operation_;
}

void DragTracker::tellAgain() {
    if (isAlive(window_)) operation_ = window_->router().dragMoved({window_->inRootView(location_), *pasteboard_});
}

void DragTracker::exited() {
    repeat_.reset();
    ViewWindow* left = std::exchange(window_, nullptr);
    operation_ = ui::DragOperation::None;
    if (isAlive(left)) left->router().dragExited();
}

ui::DragOperation DragTracker::dropped(const ui::DragPasteboard& pasteboard) {
    tellAgain();
    repeat_.reset();
    ViewWindow* window = window_;
    const ui::DragOperation operation = std::exchange(operation_, ui::DragOperation::None);
    if (operation == ui::DragOperation::None || !isAlive(window)) {
        exited();
        return ui::DragOperation::None;
    }
    window_ = nullptr;
    const bool isTaken = window->router().dragDropped({window->inRootView(location_), pasteboard});
    return isTaken ? operation : ui::DragOperation::None;
}

void DragTracker::ended() {
    exited();
    if (!std::exchange(hasBeenInside_, false)) return;
    for (ViewWindow* window : std::vector(context_.windows()))
        if (isAlive(window)) window->router().dragEnded();
}

bool DragTracker::isAlive(const ViewWindow* window) const {
    return window && std::ranges::count(context_.windows(), window) > 0;
}

}  // namespace morvel::x11
