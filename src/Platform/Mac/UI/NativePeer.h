// What AppKit shows for one view: a MorvelView, or the stock view of its kind.
#pragma once

#include "Platform/Mac/apple/AppKit/NSView.h"
#include "UI/View.h"
#include "Util/Subscription.h"

namespace morvel::mac {

/// Each `show…` brings one aspect of the native view up to date with the view. Main thread only.
class NativePeer : public ui::ViewPeer {
public:
    /// Makes the native view with everything but its place in the tree.
    explicit NativePeer(ui::View& view);
    ~NativePeer() override;

    const NSView& native() const { return native_; }

    /// A scroll view's document is scrolled to where it is.
    void showFrame(const ui::View& view) const;
    void addSubview(const NSView& child) const;
    void showVisibility(const ui::View& view) const;
    void showLook(const ui::View& view) const;
    void showContent(const ui::View& view) const;
    void showTexts(const ui::View& view) const;
    /// Colours that a layer or a stock view keeps are of the appearance in which they were set.
    void resolveColors(const ui::View& view) const;

private:
    ui::View::Kind kind_;
    NSView native_;
    NSObject delegate_;      // of a text field, which does not keep it
    Subscription scrolled_;  // of a scroll view
};

}  // namespace morvel::mac
