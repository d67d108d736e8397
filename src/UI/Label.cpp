#include "UI/Label.h"

namespace morvel::ui {

void Label::setText(std::string text) {
    if (text_ == text) return;
    text_ = std::move(text);
    measured_.reset();
    changed(ViewChange::Content);
}

void Label::setColor(const Color& color) {
    if (color_ == color) return;
    color_ = color;
    changed(ViewChange::Content);
}

Size Label::intrinsicSize() const {
    if (!measured_) measured_ = toolkit_.textSize(text_, font_);
    return *measured_;
}

}  // namespace morvel::ui
