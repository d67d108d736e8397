// Placing native views as the views are placed.
#include "Platform/Mac/UI/ViewTree.h"

#include "Platform/Mac/UI/MacDragPasteboard.h"
#include "Platform/Mac/apple/Foundation/NSNotificationCenter.h"

namespace morvel::mac {

namespace {

/// Peers of views in a ViewTree are made by it alone.
const NativePeer* peerOf(const ui::View& view) {
    return static_cast<const NativePeer*>(view.peer());
}

/// The nearest sibling in front of the view that is shown already; empty for none.
NSView shownInFrontOf(const ui::View& view) {
    bool isPassed = false;
    for (const ui::View* sibling : view.parent()->subviews()) {
        if (isPassed && sibling->peer()) return peerOf(*sibling)->native();
        isPassed = isPassed || sibling == &view;
    }
    return {};
}

void showOrder(const ui::View& view, const NSView& native) {
    std::vector<NSView> wanted;
    for (const ui::View* child : view.subviews()) {
        if (child->peer()) wanted.push_back(peerOf(*child)->native());
    }
    if (native.subviews().elements<NSView>() != wanted) native.setSubviews(wanted);
}

}  // namespace

ViewTree::ViewTree(ui::View& root) : root_(root), router_(root) {
    root_.setHost(this);
    // Only the root: with each view a destination of its own, a view would be left whenever the drag comes to a view
    // in it, and its own reordering would be undone.
    rootView().registerForDraggedTypes(draggedTypes());
    layoutNeeded();  // what asked for layout before there was a host was not heard
    systemColors_ = NSNotificationCenter::defaultCenter().observe(
        NSString(NSSystemColorsDidChangeNotification), [this](const NSNotification&) { resolveColors(root_); });
}

ViewTree::~ViewTree() {
    root_.setHost(nullptr);
}

NSView ViewTree::nativeOf(const ui::View& view) {
    return view.peer() ? peerOf(view)->native() : NSView();
}

void ViewTree::resolveColors(const ui::View& view) {
    if (!view.peer()) return;
    peerOf(view)->resolveColors(view);
    for (const ui::View* child : view.subviews()) resolveColors(*child);
}

void ViewTree::viewAttached(ui::View& view) {
    view.setPeer(std::make_unique<NativePeer>(view));
    if (!view.parent()) return;
    if (const NSView front = shownInFrontOf(view)) {
        nativeOf(*view.parent()).addSubviewBelow(nativeOf(view), front);
    } else {
        peerOf(*view.parent())->addSubview(nativeOf(view));
    }
}

void ViewTree::viewWillDetach(ui::View& view) {
    router_.viewWillDetach(view);
    // The root's native view is its window's or popover's to let go of.
    if (&view != &root_) nativeOf(view).removeFromSuperview();
}

void ViewTree::viewChanged(ui::View& view, ui::ViewChange change) {
    const NativePeer* const peer = peerOf(view);
    if (!peer) return;
    switch (change) {
        case ui::ViewChange::Frame:
            // AppKit fits a window's content to the window, and a popover's beside its arrow.
            if (&view != &root_) peer->showFrame(view);
            break;
        case ui::ViewChange::Visibility:
            peer->showVisibility(view);
            break;
        case ui::ViewChange::Look:
            peer->showLook(view);
            break;
        case ui::ViewChange::Content:
            peer->showContent(view);
            break;
        case ui::ViewChange::Texts:
            peer->showTexts(view);
            break;
        case ui::ViewChange::Order:
            showOrder(view, peer->native());
            break;
    }
}

void ViewTree::layoutNeeded() {
    rootView().setNeedsLayout(true);
}

}  // namespace morvel::mac
