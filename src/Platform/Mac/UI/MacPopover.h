// A popover with one view tree as its content.
#pragma once

#include <functional>

#include "Platform/Mac/UI/ViewTree.h"
#include "Platform/Mac/apple/AppKit/NSMenu.h"
#include "Platform/MainLoop.h"
#include "UI/Toolkit.h"
#include "Util/Lifetime.h"

namespace morvel::mac {

class MacPopover : public ui::PopoverPeer {
public:
    /// One with the keyboard closes by itself at a press elsewhere.
    MacPopover(ui::View& content, std::function<void()> closed, MainLoop& mainLoop, ui::PopoverFocus focus);
    ~MacPopover() override;

    /// An anchor that is in no window has no place beside it: nothing is shown, and `closed` comes in a later turn.
    void show(ui::View& anchor, ui::Edge edge, Size size) override;
    void resize(Size size) override;
    void close() override;

private:
    void takeKeyboard() const;

    ui::View& content_;
    const ui::PopoverFocus focus_;
    std::function<void()> closed_;
    MainLoop& mainLoop_;
    ViewTree tree_;
    NSPopover popover_;
    NSObject delegate_;  // the popover does not keep it
    Lifetime lifetime_;
};

}  // namespace morvel::mac
