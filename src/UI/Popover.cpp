#include "UI/Popover.h"

namespace morvel::ui {

Popover::Popover(Toolkit& toolkit, View& content, std::function<void()> closed, PopoverKind kind)
    : content_(content),
      closed_(std::move(closed)),
      peer_(toolkit.makePopover(
          content, [this] { didClose(); }, kind)) {}

void Popover::show(View& anchor, Edge edge, Size contentSize) {
    shown_ = true;
    content_.setFrame({0, 0, contentSize.width, contentSize.height});
    peer_->show(anchor, edge, contentSize);
}

void Popover::resize(Size contentSize) {
    content_.setFrame({0, 0, contentSize.width, contentSize.height});
    if (shown_) peer_->resize(contentSize);
}

void Popover::close() {
    if (shown_) peer_->close();
}

void Popover::didClose() {
    shown_ = false;
    closed_();
}

}  // namespace morvel::ui
