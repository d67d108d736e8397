// A bar's window: a dock that the window manager keeps above others, on all workspaces, and never focuses.
#pragma once

#include <memory>

#include "Platform/Linux/UI/ViewWindow.h"
#include "UI/Animation.h"
#include "UI/Toolkit.h"

namespace morvel::x11 {

/// Reserved space is a strut, which a panel has only while its edge is at an edge of the root window with nothing of
/// another monitor between (see PanelStrut.h), and while it is shown.
class PanelWindow : public ui::PanelPeer {
public:
    /// The context and the content outlive it.
    PanelWindow(ToolkitContext& context, const ui::PanelOptions& options, ui::View& content);
    ~PanelWindow() override;

    void setFrame(const Rect<ScreenSpace>& frame) override;
    /// Has its new size at once.
    void animateFrame(const Rect<ScreenSpace>& frame, Duration duration) override;
    void orderFront() override;
    void orderOut() override;
    void setReservesSpace(bool reserves) override;

private:
    void describe(XWindow& window) const;
    void place();
    void updateStrut();

    ToolkitContext& context_;
    const ui::Edge edge_;
    Rect<ScreenSpace> frame_;
    bool reservesSpace_ = false;
    std::unique_ptr<ViewWindow> window_;
    ui::Animation slide_;
    Subscription geometry_;
};

}  // namespace morvel::x11
