// Mirrors one tree of views in AppKit's views, for as long as it is shown.
#pragma once

#include "Platform/Mac/UI/NativePeer.h"
#include "Platform/Mac/apple/AppKit/NSView.h"
#include "UI/EventRouter.h"
#include "UI/View.h"
#include "UI/ViewHost.h"
#include "Util/Subscription.h"

namespace morvel::mac {

/// One per panel or popover, which gives the root's native view its frame. Main thread only.
class ViewTree : public ui::ViewHost {
public:
    /// The root outlives the tree.
    explicit ViewTree(ui::View& root);
    ~ViewTree() override;
    ViewTree(const ViewTree&) = delete;
    ViewTree& operator=(const ViewTree&) = delete;

    NSView rootView() const { return nativeOf(root_); }
    /// The native view behind a view; empty while it is not shown.
    static NSView nativeOf(const ui::View& view);
    /// What the native views pass on that AppKit's own dispatch does not bring to the right view: drags, which the
    /// root alone is told of, and the wheel.
    ui::EventRouter& router() { return router_; }
    /// Sets all colours of the tree anew.
    static void resolveColors(const ui::View& view);

    void viewAttached(ui::View& view) override;
    void viewWillDetach(ui::View& view) override;
    void viewChanged(ui::View& view, ui::ViewChange change) override;
    void layoutNeeded() override;

private:
    ui::View& root_;
    ui::EventRouter router_;
    Subscription systemColors_;  // the accent colour changed
};

}  // namespace morvel::mac
