#include "Platform/Linux/UI/ViewNode.h"

namespace morvel::x11 {

PangoLayout* ViewNode::layout(TextLayouts& layouts, const ui::Label& label, double width) {
    layout(layouts, std::string_view(label.text()).substr(0, kMaxShownBytes), label.font(), width);
    if (label.alignment() == ui::TextAlignment::Center) pango_layout_set_alignment(layout_.get(), PANGO_ALIGN_CENTER);
    return layout_.get();
}

PangoLayout* ViewNode::layout(TextLayouts& layouts, std::string_view text, const ui::Font& font, double width) {
    if (!layout_ || text_ != text || !(font_ == font) || width_ != width) {
        text_ = text;
        font_ = font;
        width_ = width;
        layout_ = layouts.line(text_, font_, width);
    }
    return layout_.get();
}

}  // namespace morvel::x11
