#include "sim/SimDrags.h"

#include <gtest/gtest.h>

#include <utility>

#include "sim/SimToolkit.h"

namespace morvel::sim {

void SimDrags::begin(const ui::DragItem& item, std::function<void(ui::DragOperation)> ended) {
    if (refuses) return ended(ui::DragOperation::None);
    EXPECT_FALSE(isActive()) << "a second drag while one is going on";
    pasteboard_ = std::make_unique<SimPasteboard>(SimPasteboard::ofText(item.type, item.text));
    ended_ = std::move(ended);
    toolkit_.leave();
}

void SimDrags::pull(ui::View& view) {
    toolkit_.press(view);
    const Point<ViewSpace> from = view.boundsInRoot().center();
    toolkit_.drag({from.x + 5, from.y});
    EXPECT_TRUE(isActive()) << "the view is not dragged";
}

void SimDrags::bring(SimPasteboard pasteboard) {
    EXPECT_FALSE(isActive()) << "a second drag while one is going on";
    toolkit_.leave();
    pasteboard_ = std::make_unique<SimPasteboard>(std::move(pasteboard));
}

ui::DragOperation SimDrags::over(ui::View& view, double dx) {
    SimSurface* surface = SimToolkit::surfaceOf(view);
    if (!surface || !isActive()) {
        ADD_FAILURE() << "nothing is dragged, or the view is not on the screen";
        return ui::DragOperation::None;
    }
    surface->layoutNow();
    location_ = view.boundsInRoot().center();
    location_.x += dx;
    if (surface != surface_) away();
    surface_ = surface;
    operation_ = surface->router().dragMoved(info());
    // A hand that comes to rest has moved more than once over the place.
    if (isInside()) operation_ = surface_->router().dragMoved(info());
    return operation_;
}

void SimDrags::away() {
    if (isInside()) surface_->router().dragExited();
    surface_ = nullptr;
    operation_ = ui::DragOperation::None;
}

ui::DragOperation SimDrags::drop() {
    if (!isInside() || operation_ == ui::DragOperation::None) {
        cancel();
        return ui::DragOperation::None;
    }
    SimSurface* surface = std::exchange(surface_, nullptr);
    const bool isTaken = surface->router().dragDropped(info());
    const ui::DragOperation done = isTaken ? operation_ : ui::DragOperation::None;
    finish(done);
    return done;
}

void SimDrags::cancel() {
    away();
    finish(ui::DragOperation::None);
}

bool SimDrags::isInside() const {
    return surface_ && toolkit_.isAlive(surface_);
}

void SimDrags::finish(ui::DragOperation done) {
    for (SimPanel* panel : std::vector(toolkit_.panels()))
        if (toolkit_.isAlive(&panel->surface)) panel->surface.router().dragEnded();
    for (SimPopover* popover : std::vector(toolkit_.popovers()))
        if (popover->isShown) popover->surface.router().dragEnded();
    pasteboard_.reset();
    operation_ = ui::DragOperation::None;
    if (const auto ended = std::exchange(ended_, nullptr)) toolkit_.mainLoop_.post([ended, done] { ended(done); });
}

}  // namespace morvel::sim
