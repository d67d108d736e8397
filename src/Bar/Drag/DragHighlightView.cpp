#include "Bar/Drag/DragHighlightView.h"

#include <chrono>

namespace morvel {

namespace {

using namespace std::chrono_literals;

constexpr double kAccentAlpha = 0.18;
constexpr Duration kFade = 120ms;
/// Just after the fade; a drag that comes back before does not find the view hidden.
constexpr Duration kHideDelay = 130ms;

}  // namespace

DragHighlightView::DragHighlightView(MainLoop& mainLoop) : mainLoop_(mainLoop), foreignDragOpacity_(mainLoop) {
    setHidden(true);
    setAlpha(0);
}

void DragHighlightView::setOn(bool on, const ui::Color& accent) {
    isOn_ = on;
    if (on) {
        setBackground(accent.withAlpha(kAccentAlpha));
        setHidden(false);
        hide_.reset();
    } else {
        hide_ = mainLoop_.after(kHideDelay, [this] {
            if (!isOn_) setHidden(true);
        });
    }
    fadeTo(on ? 1 : 0);
}

void DragHighlightView::fadeTo(double opacity) {
    foreignDragOpacity_.start(
        kFade, [this, from = alpha(), opacity](double progress) { setAlpha(from + (opacity - from) * progress); });
}

}  // namespace morvel
