#include "Platform/Linux/UI/ViewPainter.h"

#include <pango/pangocairo.h>

#include <cmath>
#include <memory>
#include <numbers>

#include "Platform/Linux/UI/ViewNode.h"
#include "UI/VisualEffectView.h"

namespace morvel::x11 {

namespace {

template <class Space>
PixelRect nearestPixels(const Rect<Space>& r) {
    const PixelRect touched = pixelsTouched(Rect<Space>{std::round(r.minX()), std::round(r.minY()), 0, 0});
    const PixelRect end = pixelsTouched(Rect<Space>{std::round(r.maxX()), std::round(r.maxY()), 0, 0});
    return {touched.x, touched.y, end.x - touched.x, end.y - touched.y};
}

}  // namespace

void addRoundedRect(cairo_t* cr, double x, double y, double width, double height, double radius) {
    const double r = std::min({radius, width / 2, height / 2});
    if (r <= 0) return cairo_rectangle(cr, x, y, width, height);
    const double quarter = std::numbers::pi / 2;
    cairo_new_sub_path(cr);
    cairo_arc(cr, x + width - r, y + r, r, -quarter, 0);
    cairo_arc(cr, x + width - r, y + height - r, r, 0, quarter);
    cairo_arc(cr, x + r, y + height - r, r, quarter, 2 * quarter);
    cairo_arc(cr, x + r, y + r, r, 2 * quarter, 3 * quarter);
    cairo_close_path(cr);
}

void ViewPainter::setSource(const ui::RGBA& color, double opacity) {
    cairo_set_source_rgba(cr_, color.red, color.green, color.blue, color.alpha * opacity);
}

void ViewPainter::paint(const ui::View& view, Point<ViewSpace> corner, double opacity) {
    if (view.isHidden() || view.alpha() <= 0) return;
    const Rect<ViewSpace> rect{corner.x, corner.y, view.frame().width, view.frame().height};
    const bool isDamaged = damage_.intersects(pixelsTouched(rect));
    if (!isDamaged && view.clipsToBounds()) return;

    // A translucent view with subviews is blended as one; where they overlap, nothing may shine through twice.
    const bool isGroup = view.alpha() < 1 && !view.subviews().empty();
    if (isGroup && !isDamaged && !isDamagedBelow(view, corner)) return;
    const double own = isGroup ? 1 : opacity * view.alpha();
    if (isGroup) cairo_push_group(cr_);
    const PixelRect pixels = nearestPixels(rect);
    if (isDamaged) paintItself(view, corner, pixels, own);
    if (!view.subviews().empty()) paintSubviews(view, corner, pixels, own);
    if (isGroup) {
        cairo_pop_group_to_source(cr_);
        cairo_paint_with_alpha(cr_, opacity * view.alpha());
    }
}

void ViewPainter::paintSubviews(const ui::View& view, Point<ViewSpace> corner, const PixelRect& pixels,
                                double opacity) {
    if (view.clipsToBounds()) {
        cairo_save(cr_);
        addRoundedRect(cr_, pixels.x, pixels.y, pixels.width, pixels.height, view.cornerRadius());
        cairo_clip(cr_);
    }
    for (const ui::View* subview : view.subviews())
        paint(*subview, {corner.x + subview->frame().x, corner.y + subview->frame().y}, opacity);
    if (view.clipsToBounds()) cairo_restore(cr_);
}

bool ViewPainter::isDamagedBelow(const ui::View& view, Point<ViewSpace> corner) const {
    return std::ranges::any_of(view.subviews(), [&](const ui::View* subview) {
        const Rect<ViewSpace>& frame = subview->frame();
        const Rect<ViewSpace> rect{corner.x + frame.x, corner.y + frame.y, frame.width, frame.height};
        return damage_.intersects(pixelsTouched(rect)) || isDamagedBelow(*subview, rect.origin());
    });
}

void ViewPainter::paintItself(const ui::View& view, Point<ViewSpace> corner, const PixelRect& pixels, double opacity) {
    const auto fill = [&](const ui::RGBA& color) {
        setSource(color, opacity);
        addRoundedRect(cr_, pixels.x, pixels.y, pixels.width, pixels.height, view.cornerRadius());
        cairo_fill(cr_);
    };
    if (view.kind() == ui::View::Kind::VisualEffect)
        fill(palette_.material(static_cast<const ui::VisualEffectView&>(view).material(), isComposited_));
    if (!view.background().isClear()) fill(palette_.resolve(view.background()));
    if (view.kind() == ui::View::Kind::Label) paintLabel(static_cast<const ui::Label&>(view), corner, opacity);
    if (view.kind() == ui::View::Kind::Image) paintImage(static_cast<const ui::ImageView&>(view), corner, opacity);
    if (view.borderWidth() > 0 && !view.borderColor().isClear()) paintBorder(view, pixels, opacity);
}

void ViewPainter::paintBorder(const ui::View& view, const PixelRect& pixels, double opacity) {
    // A line thinner than a pixel is a whole pixel of less colour, which is what a sharp screen makes of it for the
    // eye.
    const double width = std::max(1.0, view.borderWidth());
    ui::RGBA color = palette_.resolve(view.borderColor());
    color.alpha *= std::min(1.0, view.borderWidth());
    setSource(color, opacity);
    cairo_set_line_width(cr_, width);
    addRoundedRect(cr_, pixels.x + width / 2, pixels.y + width / 2, pixels.width - width, pixels.height - width,
                   view.cornerRadius() - width / 2);
    cairo_stroke(cr_);
}

void ViewPainter::paintLabel(const ui::Label& label, Point<ViewSpace> corner, double opacity) {
    ViewNode* node = nodeOf(label);
    if (!node || label.text().empty() || label.frame().width <= 0) return;
    PangoLayout* layout = node->layout(layouts_, label, label.frame().width);
    const double top = corner.y + (label.frame().height - sizeOf(layout).height) / 2;
    setSource(palette_.resolve(label.color()), opacity);
    cairo_move_to(cr_, std::round(corner.x), std::round(top));
    pango_cairo_show_layout(cr_, layout);
}

void ViewPainter::paintImage(const ui::ImageView& view, Point<ViewSpace> corner, double opacity) {
    ViewNode* node = nodeOf(view);
    const auto image = std::dynamic_pointer_cast<const XImage>(view.image());
    if (!node || !image || image->pixelWidth() <= 0 || image->pixelHeight() <= 0) return;
    const double scale = std::min(view.frame().width / image->pixelWidth(), view.frame().height / image->pixelHeight());
    const int width = static_cast<int>(std::lround(image->pixelWidth() * scale));
    const int height = static_cast<int>(std::lround(image->pixelHeight() * scale));
    if (width <= 0 || height <= 0) return;
    const double x = std::round(corner.x + (view.frame().width - width) / 2);
    const double y = std::round(corner.y + (view.frame().height - height) / 2);
    cairo_surface_t* surface = node->scaled(image, width, height);
    if (image->isTemplate()) {
        setSource(palette_.resolve(view.tint()), opacity);
        cairo_mask_surface(cr_, surface, x, y);
    } else {
        cairo_set_source_surface(cr_, surface, x, y);
        cairo_paint_with_alpha(cr_, opacity);
    }
}

}  // namespace morvel::x11
