// The column of rows of pinned items that have no place on the bar, in a scroll view.
#pragma once

#include <functional>
#include <optional>

#include "Bar/Pinned/PinnedStackView.h"

namespace morvel {

class PinnedOverflowReorderStack : public PinnedStackView {
public:
    /// Asked to show rows further down by this many, or up.
    using Scroll = std::function<void(double rows)>;

    PinnedOverflowReorderStack(MainLoop& mainLoop, PinnedStackHooks hooks, Scroll scroll);

    ui::DragOperation draggingUpdated(const ui::DragInfo& info) override;

private:
    void scrollAtEdge(Point<ViewSpace> inRoot);

    MainLoop& mainLoop_;
    Scroll scroll_;
    std::optional<Instant> scrolledAt_;
};

}  // namespace morvel
