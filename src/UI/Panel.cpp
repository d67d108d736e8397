#include "UI/Panel.h"

namespace morvel::ui {

Panel::Panel(Toolkit& toolkit, const PanelOptions& options, View& content) : content_(content), frame_(options.frame) {
    content_.setFrame({0, 0, frame_.width, frame_.height});
    peer_ = toolkit.makePanel(options, content_);
}

void Panel::setFrame(const Rect<ScreenSpace>& frame) {
    frame_ = frame;
    peer_->setFrame(frame);
    content_.setFrame({0, 0, frame.width, frame.height});
}

void Panel::animateFrame(const Rect<ScreenSpace>& frame, Duration duration) {
    if (frame_ == frame) return;
    frame_ = frame;
    peer_->animateFrame(frame, duration);
    content_.setFrame({0, 0, frame.width, frame.height});
}

}  // namespace morvel::ui
