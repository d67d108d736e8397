// The tint over the whole bar while something from elsewhere is dragged over it.
#pragma once

#include "UI/Animation.h"
#include "UI/View.h"

namespace morvel {

/// Hidden while idle. Takes no pointer and no drag.
class DragHighlightView : public ui::View {
public:
    explicit DragHighlightView(MainLoop& mainLoop);

    /// Fades in or out from however it shows now.
    void setOn(bool on, const ui::Color& accent);

private:
    void fadeTo(double opacity);

    MainLoop& mainLoop_;
    bool isOn_ = false;
    ui::Animation foreignDragOpacity_;
    Timer hide_;  // last, with the animation, so that neither reaches a half-dead view
};

}  // namespace morvel
