// A desktop on whose bars things are dragged, and words for what is seen of that.
#pragma once

#include "App/BarDesktop.h"
#include "Bar/Drag/DragHighlightView.h"
#include "Bar/Drag/DragPlaceholderButton.h"
#include "sim/SimDrags.h"

namespace morvel {

class DragDesktop : public BarDesktop {
public:
    using BarDesktop::BarDesktop;

    sim::SimDrags& drags() { return toolkit().drags(); }
    /// Takes what is dragged to the view and lets it go there; what was done with it, as was offered before.
    ui::DragOperation dropOn(ui::View& view, double dx = 0) {
        const ui::DragOperation offered = drags().over(view, dx);
        EXPECT_EQ(drags().drop(), offered);
        return offered;
    }
    size_t placeholders(size_t screen = 0) { return all<DragPlaceholderButton>(bar(screen)).size(); }
    bool isHighlighted(size_t screen = 0) {
        const auto views = all<DragHighlightView>(bar(screen));
        return !views.empty() && !views[0]->isHidden();
    }
    int held = 0;  ///< how many more times the counted bars were asked to stay shown than they were let go
    void countHolds(size_t screen = 0) {
        auto& view = static_cast<MorvelView&>(bar(screen));
        view.pinReveal = [this] { ++held; };
        view.unpinReveal = [this] { --held; };
    }
};

}  // namespace morvel
