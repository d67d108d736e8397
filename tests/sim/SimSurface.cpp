#include "sim/SimSurface.h"

#include <gtest/gtest.h>

namespace morvel::sim {

namespace {

/// That a view is shown here.
struct SimPeer : ui::ViewPeer {};

}  // namespace

void SimSurface::viewAttached(ui::View& view) {
    EXPECT_FALSE(view.peer()) << "a view was shown twice";
    view.setPeer(std::make_unique<SimPeer>());
    ++attached_;
}

void SimSurface::viewWillDetach(ui::View& view) {
    EXPECT_TRUE(view.peer()) << "a view left that had not come";
    router_.viewWillDetach(view);
    repaints_.erase(&view);
    --attached_;
}

void SimSurface::viewChanged(ui::View& view, ui::ViewChange change) {
    Repaints& counts = repaints_[&view];
    switch (change) {
        case ui::ViewChange::Content:
            ++counts.content;
            break;
        case ui::ViewChange::Look:
            ++counts.look;
            break;
        case ui::ViewChange::Visibility:
            ++counts.visibility;
            break;
        case ui::ViewChange::Frame:
            ++counts.frame;
            break;
        case ui::ViewChange::Texts:
        case ui::ViewChange::Order:
            break;
    }
}

void SimSurface::layoutNeeded() {
    if (layoutPending_) return;
    layoutPending_ = true;
    mainLoop_.post([weak = std::weak_ptr(self_)] {
        if (const auto self = weak.lock()) (*self)->layoutNow();
    });
}

void SimSurface::layoutNow() {
    // Frames that change during a layout ask for one again; those are done below their parents in the same pass, so
    // one pass is enough, and a second one finds nothing to do.
    root_.layoutIfNeeded();
    layoutPending_ = false;
    router_.layoutChanged();
}

Repaints SimSurface::repaints(const ui::View& view) const {
    const auto found = repaints_.find(&view);
    return found == repaints_.end() ? Repaints{} : found->second;
}

}  // namespace morvel::sim
