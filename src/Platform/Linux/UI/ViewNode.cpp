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

cairo_surface_t* ViewNode::scaled(const std::shared_ptr<const XImage>& image, int width, int height) {
    if (image->pixelWidth() == width && image->pixelHeight() == height) {
        scaled_.reset();
        image_.reset();
        return image->surface();
    }
    if (image_ == image && scaledWidth_ == width && scaledHeight_ == height) return scaled_.get();
    image_ = image;
    scaledWidth_ = width;
    scaledHeight_ = height;
    scaled_.reset(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
    cairo_t* cr = cairo_create(scaled_.get());
    cairo_scale(cr, static_cast<double>(width) / image->pixelWidth(),
                static_cast<double>(height) / image->pixelHeight());
    cairo_set_source_surface(cr, image->surface(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_BEST);
    cairo_pattern_set_extend(cairo_get_source(cr), CAIRO_EXTEND_PAD);  // no faded rim
    cairo_paint(cr);
    cairo_destroy(cr);
    return scaled_.get();
}

}  // namespace morvel::x11
