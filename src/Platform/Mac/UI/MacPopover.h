// A popover with one view tree as its content.
#pragma once

#include <functional>

#include "Platform/Mac/UI/ViewTree.h"
#include "Platform/Mac/apple/AppKit/NSEvent.h"
#include "Platform/Mac/apple/AppKit/NSMenu.h"
#include "Platform/MainLoop.h"
#include "UI/Toolkit.h"
#include "Util/Lifetime.h"

namespace morvel::mac {

class MacPopover : public ui::PopoverPeer {
public:
    MacPopover(ui::View& content, std::function<void()> closed, MainLoop& mainLoop, ui::PopoverKind kind);
    ~MacPopover() override;

    /// An anchor that is in no window has no place beside it: nothing is shown, and `closed` comes in a later turn.
    void show(ui::View& anchor, ui::Edge edge, Size size) override;
    void resize(Size size) override;
    void close() override;

private:
    void takeKeyboard() const;
    void pressed(const NSEvent& event, const NSView& anchor);
    void didClose();

    ui::View& content_;
    const ui::PopoverKind kind_;
    std::function<void()> closed_;
    MainLoop& mainLoop_;
    ViewTree tree_;
    NSPopover popover_;
    NSObject delegate_;     // the popover does not keep it
    Subscription presses_;  // in this program's windows, while it is shown
    Lifetime lifetime_;
};

}  // namespace morvel::mac
