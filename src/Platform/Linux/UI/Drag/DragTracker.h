// A drag over the windows of this program, whoever started it: tells the views that it is over.
#pragma once

#include "Platform/Linux/UI/ToolkitContext.h"

namespace morvel::x11 {

/// Main thread only. Windows may go away between calls, and inside them. While the drag rests, its place is told again
/// and again: views act on a move after the entering, and slide to other places under the pointer.
class DragTracker {
public:
    /// The context outlives it. A drag that was not `ended` ends with the object.
    explicit DragTracker(ToolkitContext& context) : context_(context) {}
    ~DragTracker() { ended(); }
    DragTracker(const DragTracker&) = delete;
    DragTracker& operator=(const DragTracker&) = delete;

    /// It is over this window, at this place on the root; the answer is what a drop here would do. The pasteboard
    /// stays until it is told to be elsewhere.
    ui::DragOperation moved(ViewWindow& window, Point<RootSpace> location, const ui::DragPasteboard& pasteboard);
    /// It is over no window of ours, but not over yet.
    void exited();
    /// Dropped where it was moved to last. What was done.
    ui::DragOperation dropped(const ui::DragPasteboard& pasteboard);
    /// It is over: all windows that it has been over are told.
    void ended();

    /// Whether it is over a window of ours, as far as was told.
    bool isInside() const { return window_ != nullptr; }

private:
    void tellAgain();
    bool isAlive(const ViewWindow* window) const;

    ToolkitContext& context_;
    ViewWindow* window_ = nullptr;  // may be gone: see isAlive
    Point<RootSpace> location_;
    const ui::DragPasteboard* pasteboard_ = nullptr;  // while inside
    ui::DragOperation operation_ = ui::DragOperation::None;
    bool hasBeenInside_ = false;
    Timer repeat_;
};

}  // namespace morvel::x11
