// The thin unseen strip along the screen edge that brings a hidden bar back.
#pragma once

#include <functional>

#include "UI/Panel.h"
#include "UI/View.h"

namespace morvel {

/// The strip's view: the pointer in it, or something that is dragged, wants the bar. A pointer that was there before
/// the strip does not enter it, but it moves.
class TriggerView : public ui::View {
public:
    explicit TriggerView(std::function<void()> onEnter) : onEnter_(std::move(onEnter)) {}

    bool tracksHover() const override { return true; }
    bool tracksMoves() const override { return true; }
    void mouseEntered(const ui::MouseEvent&) override { onEnter_(); }
    void mouseMoved(const ui::MouseEvent&) override { onEnter_(); }
    void windowDragEntered(const ui::DragInfo&) override { onEnter_(); }

private:
    std::function<void()> onEnter_;
};

/// Main thread only. Destroying it takes the strip away.
class EdgeRevealTrigger {
public:
    using FrameProvider = std::function<Rect<ScreenSpace>()>;

    /// Not armed yet. `onEnter` is called when the pointer comes into the strip, dragging something or not, or moves in
    /// it, and may disarm it; the toolkit outlives the trigger.
    EdgeRevealTrigger(ui::Toolkit& toolkit, ui::Edge edge, FrameProvider frameProvider, std::function<void()> onEnter)
        : frameProvider_(std::move(frameProvider)),
          view_(std::move(onEnter)),
          panel_(toolkit, {frameProvider_(), edge, ui::PanelKind::Strip}, view_) {}

    /// The strip lies over the bar, so it is there only while that is hidden: a press at the very edge is the bar's.
    void setArmed(bool armed) { armed ? panel_.orderFront() : panel_.orderOut(); }
    /// Reads the strip's frame anew.
    void updateGeometry() { panel_.setFrame(frameProvider_()); }

private:
    FrameProvider frameProvider_;
    TriggerView view_;
    ui::Panel panel_;
};

}  // namespace morvel
