// What a tree of views asks of the surface that shows it. A host implements it once per panel or popover.
#pragma once

namespace morvel::ui {

class View;

/// What of a view changed, so that a host touches only that.
enum class ViewChange {
    Frame,       ///< origin or size
    Visibility,  ///< hidden or alpha
    Look,        ///< background, corners, border
    Content,     ///< text, image, material
    Texts,       ///< tooltip or accessibility label
    Order,       ///< its subviews' order
};

/// What a host keeps for one view while it is shown: a native view, or a cache of what was drawn.
class ViewPeer {
public:
    virtual ~ViewPeer() = default;
};

/// Main thread only.
class ViewHost {
public:
    virtual ~ViewHost() = default;

    /// The view has joined the tree; its parent was told before, its subviews are told after. The host may give it a
    /// peer.
    virtual void viewAttached(View& view) = 0;
    /// The view leaves the tree (its subviews were told before it) and may be half destroyed: only its identity, frame
    /// and peer may be used. The peer is destroyed after this call.
    virtual void viewWillDetach(View& view) = 0;
    virtual void viewChanged(View& view, ViewChange change) = 0;
    /// Some view wants layout: call the root's `layoutIfNeeded` before the next time something is shown.
    virtual void layoutNeeded() = 0;
};

}  // namespace morvel::ui
