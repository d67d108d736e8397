// A borderless window at a screen edge that shows one view tree and never takes the focus.
#pragma once

#include <memory>

#include "UI/Toolkit.h"
#include "UI/View.h"

namespace morvel::ui {

class Panel {
public:
    /// The panel is not shown before `orderFront`. The content outlives the panel and is resized to fill it.
    Panel(Toolkit& toolkit, const PanelOptions& options, View& content);

    const Rect<ScreenSpace>& frame() const { return frame_; }
    View& content() { return content_; }
    /// Does nothing where the window is there already, or is on its way there.
    void setFrame(const Rect<ScreenSpace>& frame);
    /// The same, gliding; the content gets its new size at once.
    void animateFrame(const Rect<ScreenSpace>& frame, Duration duration);
    void orderFront() { peer_->orderFront(); }
    void orderOut() { peer_->orderOut(); }
    void setReservesSpace(bool reserves) { peer_->setReservesSpace(reserves); }

private:
    View& content_;
    Rect<ScreenSpace> frame_;
    std::unique_ptr<PanelPeer> peer_;
};

}  // namespace morvel::ui
