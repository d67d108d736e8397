// A strip at a screen edge that nobody sees and that notices the pointer, dragging something or not.
#pragma once

#include <memory>

#include "Platform/Linux/UI/ViewWindow.h"
#include "UI/Toolkit.h"

namespace morvel::x11 {

/// A window without pixels, which needs no compositing manager to be unseen and which no window manager knows. It is
/// in front of all windows: whenever the window manager restacks its own, it goes back there.
class StripWindow : public ui::PanelPeer {
public:
    /// The context and the content outlive it.
    StripWindow(ToolkitContext& context, const Rect<ScreenSpace>& frame, ui::View& content);
    ~StripWindow() override;

    void setFrame(const Rect<ScreenSpace>& frame) override;
    /// There is nothing to be seen moving.
    void animateFrame(const Rect<ScreenSpace>& frame, Duration) override { setFrame(frame); }
    void orderFront() override { window_->show(); }
    void orderOut() override { window_->hide(); }
    void setReservesSpace(bool) override {}

private:
    void place();

    ToolkitContext& context_;
    Rect<ScreenSpace> frame_;
    std::unique_ptr<ViewWindow> window_;
    Subscription geometry_;
    Subscription restacking_;
};

}  // namespace morvel::x11
