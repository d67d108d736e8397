// Lets views slide to where a layout puts them instead of jumping there.
#pragma once

#include <unordered_map>

#include "UI/Animation.h"
#include "UI/View.h"

namespace morvel::ui {

/// Of one view and its subviews; owned by it. Main thread only.
class LayoutAnimator {
public:
    LayoutAnimator(MainLoop& mainLoop, View& parent) : parent_(parent), animation_(mainLoop) {}

    /// Remembers where the subviews are; called before their frames are set anew.
    void willLayout();
    /// The frames have been set. Subviews that were elsewhere before go back there and slide to their new places in
    /// this time; without it they slide on if they were on their way, and else stay where they were put. A subview
    /// that had no size before is not moved.
    void didLayout(Duration duration);
    bool isRunning() const { return animation_.isRunning(); }

private:
    struct Way {
        Rect<ViewSpace> from;
        Rect<ViewSpace> to;
    };
    void step(double progress);

    View& parent_;
    std::unordered_map<View*, Way> ways_;  // a view that has left the parent is never touched: see step
    std::unordered_map<const View*, Rect<ViewSpace>> before_;  // only while the frames are set
    Animation animation_;
};

}  // namespace morvel::ui
