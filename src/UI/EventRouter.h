// Finds the views that the pointer's doings concern, for hosts whose windows know nothing of views.
#pragma once

#include <vector>

#include "UI/View.h"

namespace morvel::ui {

/// One per window. Presses are the deepest accepting view's; what follows until the release goes to the same view.
/// Hover goes to every tracking view under the pointer. Views may leave the tree inside any handler.
class EventRouter {
public:
    /// The root outlives the router.
    explicit EventRouter(View& root) : root_(root) {}

    void pointerMoved(Point<ViewSpace> location);
    /// The pointer left the window.
    void pointerExited();
    /// The return value says whether a view took the press.
    bool buttonPressed(const MouseEvent& event);
    void buttonReleased(const MouseEvent& event);
    /// Goes to the deepest view under the pointer that uses it; whether there was one.
    bool wheelTurned(const WheelEvent& event);

    /// A drag is over the window; the answer is what a drop here would do.
    DragOperation dragMoved(const DragInfo& info);
    /// It left the window, or was given up.
    void dragExited();
    /// It was dropped here; whether a view took it. The end is told apart, by `dragEnded`.
    bool dragDropped(const DragInfo& info);
    /// The drag is over, wherever it was dropped. Hosts tell every window that it has been over, or simply all.
    void dragEnded();

    /// The host passes on each leaving view.
    void viewWillDetach(View& view);
    /// Views have moved under a pointer that rests: hover is worked out anew.
    void layoutChanged();

    /// The tracked views under the pointer, outermost first.
    const std::vector<View*>& hovered() const { return hovered_; }
    /// The innermost view under the pointer that has a tooltip; null for none.
    View* tooltipView() const;

private:
    void updateHover();

    View& root_;
    View* pressed_ = nullptr;
    MouseButton pressedButton_ = MouseButton::Left;
    std::vector<View*> hovered_;
    std::vector<View*> entering_;     // under the pointer, not told yet; only while hover is worked out
    View* dragTarget_ = nullptr;      // has been told that the drag entered it
    bool isDragInside_ = false;       // as the root was told
    View* lastDragTarget_ = nullptr;  // to be told of the end
    bool inside_ = false;
    Point<ViewSpace> location_;
};

}  // namespace morvel::ui
