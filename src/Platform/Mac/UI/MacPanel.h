// The panel of a bar, or of the strip at its edge: above other windows, on every Space as AppKit decides, never key and
// never main.
#pragma once

#include <cstdint>
#include <optional>

#include "Platform/Mac/UI/ViewTree.h"
#include "Platform/Mac/apple/AppKit/NSWindow.h"
#include "UI/Toolkit.h"

namespace morvel::mac {

class MacPanel : public ui::PanelPeer {
public:
    MacPanel(const ui::PanelOptions& options, ui::View& content);
    ~MacPanel() override;

    void setFrame(const Rect<ScreenSpace>& frame) override;
    void animateFrame(const Rect<ScreenSpace>& frame, Duration duration) override;
    void orderFront() override { panel_.orderFrontRegardless(); }
    void orderOut() override { panel_.orderOut(); }
    /// Windows are kept clear by moving them, not by the window server.
    void setReservesSpace(bool) override {}

private:
    void slideTo(const CGRect& frame, double seconds) const;

    struct Slide {
        CGRect target;
        std::uint64_t end;  // on the clock of `uptimeNanoseconds`
    };

    ViewTree tree_;
    NSPanel panel_;
    std::optional<Slide> slide_;  // the last one, which may have ended
};

}  // namespace morvel::mac
