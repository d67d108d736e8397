// A popover: a small window with an arrow that points at what it belongs to.
#pragma once

#include <functional>
#include <memory>

#include "Platform/Linux/UI/Placement.h"
#include "Platform/Linux/UI/Text/FieldEditor.h"
#include "Platform/Linux/UI/ViewWindow.h"
#include "UI/Toolkit.h"

namespace morvel::x11 {

/// What is higher than the monitor has room for is turned with the wheel. Nothing can be shown beside an anchor that is
/// in no window: the popover counts as closed then. Nothing is animated: the kinds differ by the keyboard alone.
class PopoverWindow : public ui::PopoverPeer {
public:
    /// The context and the content outlive it.
    PopoverWindow(ToolkitContext& context, ui::View& content, std::function<void()> closed, ui::PopoverKind kind);
    ~PopoverWindow() override;

    void show(ui::View& anchor, ui::Edge edge, Size size) override;
    void resize(Size size) override;
    void close() override;

private:
    void place(Size size);
    void apply();
    void scrollBy(double distance);
    void takeKeyboard();

    ToolkitContext& context_;
    ui::View& content_;
    std::function<void()> closed_;
    Rect<RootSpace> anchor_;  // as it was when shown
    ui::Edge edge_ = ui::Edge::Top;
    PopoverPlace place_;
    Size size_;                           // of the content
    double scrolled_ = 0;                 // how much of the content lies above the window's body
    std::unique_ptr<ViewWindow> window_;  // only while it is shown
    const ui::PopoverKind kind_;
    std::unique_ptr<FieldEditor> editor_;  // while one with the keyboard is shown
    Subscription presses_;                 // while it is shown
    Timer refused_;
};

}  // namespace morvel::x11
