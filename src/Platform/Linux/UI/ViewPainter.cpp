#include "Platform/Linux/UI/ViewPainter.h"

#include <pango/pangocairo.h>

#include <cmath>

#include "Platform/Linux/UI/ViewNode.h"
#include "UI/VisualEffectView.h"

namespace morvel::x11 {

namespace {

// The look of a text field.
constexpr double kFocusRing = 2;
constexpr double kFocusRingAlpha = 0.7;
constexpr double kSelectionAlpha = 0.35;

template <class Space>
PixelRect nearestPixels(const Rect<Space>& r) {
    const PixelRect touched = pixelsTouched(Rect<Space>{std::round(r.minX()), std::round(r.minY()), 0, 0});
    const PixelRect end = pixelsTouched(Rect<Space>{std::round(r.maxX()), std::round(r.maxY()), 0, 0});
    return {touched.x, touched.y, end.x - touched.x, end.y - touched.y};
}

}  // namespace

void ViewPainter::setSource(const ui::RGBA& color, double opacity) {
    cairo_set_source_rgba(cr_, color.red, color.green, color.blue, color.alpha * opacity);
}

void ViewPainter::paint(const ui::View& view, Point<ViewSpace> corner, double opacity) {
    if (view.isHidden() || view.alpha() <= 0) return;
    const Rect<ViewSpace> rect{corner.x, corner.y, view.frame().width, view.frame().height};
    const bool isInPart = part_.touches(rect);
    if (!isInPart && view.clipsToBounds()) return;

    // A translucent view with subviews is blended as one; where they overlap, nothing may shine through twice.
    const bool isGroup = view.alpha() < 1 && !view.subviews().empty();
    if (isGroup && !isInPart && !isInPartBelow(view, corner)) return;
    const double own = isGroup ? 1 : opacity * view.alpha();
    if (isGroup) cairo_push_group(cr_);
    if (isInPart) paintItself(view, corner, nearestPixels(rect), own);
    if (!view.subviews().empty()) paintSubviews(view, corner, own);
    if (isGroup) {
        cairo_pop_group_to_source(cr_);
        cairo_paint_with_alpha(cr_, opacity * view.alpha());
    }
}

void ViewPainter::paintSubviews(const ui::View& view, Point<ViewSpace> corner, double opacity) {
    const bool clips = view.clipsToBounds();
    if (clips) {
        cairo_save(cr_);
        clipTo(view, nearestPixels(Rect<ViewSpace>{corner.x, corner.y, view.frame().width, view.frame().height}));
    }
    for (const ui::View* subview : view.subviews())
        paint(*subview, {corner.x + subview->frame().x, corner.y + subview->frame().y}, opacity);
    if (clips) cairo_restore(cr_);
}

void ViewPainter::clipTo(const ui::View& view, const PixelRect& pixels) {
    addRoundedRect(cr_, pixels.x, pixels.y, pixels.width, pixels.height, view.cornerRadius());
    cairo_clip(cr_);
}

bool ViewPainter::isInPartBelow(const ui::View& view, Point<ViewSpace> corner) const {
    return std::ranges::any_of(view.subviews(), [&](const ui::View* subview) {
        const Rect<ViewSpace>& frame = subview->frame();
        const Rect<ViewSpace> rect{corner.x + frame.x, corner.y + frame.y, frame.width, frame.height};
        return part_.touches(rect) || isInPartBelow(*subview, rect.origin());
    });
}

void ViewPainter::paintItself(const ui::View& view, Point<ViewSpace> corner, const PixelRect& pixels, double opacity) {
    const auto fill = [&](const ui::RGBA& color) {
        setSource(color, opacity);
        shapes_.fill(cr_, pixels, view.cornerRadius());
    };
    if (view.kind() == ui::View::Kind::VisualEffect)
        fill(palette_.material(static_cast<const ui::VisualEffectView&>(view).material(), isComposited_));
    if (!view.background().isClear()) fill(palette_.resolve(view.background()));
    if (view.kind() == ui::View::Kind::Label) paintLabel(static_cast<const ui::Label&>(view), corner, opacity);
    if (view.kind() == ui::View::Kind::Image)
        paintImage(static_cast<const ui::ImageView&>(view), corner, pixels, opacity);
    if (view.kind() == ui::View::Kind::TextField)
        paintTextField(static_cast<const ui::TextField&>(view), pixels, opacity);
    if (view.borderWidth() > 0 && !view.borderColor().isClear()) paintBorder(view, pixels, opacity);
}

void ViewPainter::paintBorder(const ui::View& view, const PixelRect& pixels, double opacity) {
    // A line thinner than a pixel is a whole pixel of less colour, which is what a sharp screen makes of it for the
    // eye.
    const double width = std::max(1.0, view.borderWidth());
    ui::RGBA color = palette_.resolve(view.borderColor());
    color.alpha *= std::min(1.0, view.borderWidth());
    setSource(color, opacity);
    shapes_.outline(cr_, pixels, view.cornerRadius(), width);
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

void ViewPainter::paintImage(const ui::ImageView& view, Point<ViewSpace> corner, const PixelRect& pixels,
                             double opacity) {
    const auto* image = dynamic_cast<const XImage*>(view.image().get());
    if (!image || image->pixelWidth() <= 0 || image->pixelHeight() <= 0) return;
    const Size shown = view.scaling() == ui::ImageScaling::Fit ? view.frame().size() : image->size();
    const double scale = std::min(shown.width / image->pixelWidth(), shown.height / image->pixelHeight());
    const int width = static_cast<int>(std::lround(image->pixelWidth() * scale));
    const int height = static_cast<int>(std::lround(image->pixelHeight() * scale));
    if (width <= 0 || height <= 0) return;
    const double x = std::round(corner.x + (view.frame().width - width) / 2);
    const double y = std::round(corner.y + (view.frame().height - height) / 2);
    cairo_surface_t* surface = image->scaled(width, height);
    cairo_save(cr_);
    if (view.clipsToBounds()) clipTo(view, pixels);
    if (image->isTemplate()) {
        setSource(palette_.resolve(view.tint()), opacity);
        cairo_mask_surface(cr_, surface, x, y);
    } else {
        cairo_set_source_surface(cr_, surface, x, y);
        cairo_paint_with_alpha(cr_, opacity);
    }
    cairo_restore(cr_);
}

void ViewPainter::paintTextField(const ui::TextField& field, const PixelRect& pixels, double opacity) {
    const ViewNode* node = nodeOf(field);
    const bool hasKeyboard = node && node->caret;
    setSource(palette_.textField(), opacity);
    shapes_.fill(cr_, pixels, ui::TextField::kRadius);
    const double ring = hasKeyboard ? kFocusRing : 1;
    setSource(palette_.resolve(hasKeyboard ? ui::kControlAccentColor.withAlpha(kFocusRingAlpha) : ui::kSeparatorColor),
              opacity);
    shapes_.outline(cr_, pixels, ui::TextField::kRadius, ring);
    cairo_save(cr_);
    cairo_rectangle(cr_, pixels.x + ui::TextField::kPadding - 1, pixels.y,
                    std::max(0.0, pixels.width - 2 * ui::TextField::kPadding + 2), pixels.height);
    cairo_clip(cr_);
    paintFieldText(field, pixels, opacity);
    cairo_restore(cr_);
}

void ViewPainter::paintFieldText(const ui::TextField& field, const PixelRect& pixels, double opacity) {
    ViewNode* node = nodeOf(field);
    if (!node) return;
    const bool isEmpty = field.text().empty();
    PangoLayout* layout = node->layout(layouts_, isEmpty ? field.placeholder() : field.text(), field.font());
    const double height = sizeOf(layout).height;
    const double scrolled = node->caret && !isEmpty ? node->caret->scrolled : 0;
    const double x = std::round(pixels.x + ui::TextField::kPadding - scrolled);
    const double y = std::round(pixels.y + (pixels.height - height) / 2);
    if (!isEmpty && node->caret && node->caret->selectionStart < node->caret->selectionEnd) {
        setSource(palette_.resolve(ui::kControlAccentColor.withAlpha(kSelectionAlpha)), opacity);
        int* ranges = nullptr;
        int count = 0;
        pango_layout_line_get_x_ranges(pango_layout_get_line_readonly(layout, 0),
                                       static_cast<int>(node->caret->selectionStart),
                                       static_cast<int>(node->caret->selectionEnd), &ranges, &count);
        for (int i = 0; i < count; ++i)
            cairo_rectangle(cr_, x + static_cast<double>(ranges[2 * i]) / PANGO_SCALE, y,
                            static_cast<double>(ranges[2 * i + 1] - ranges[2 * i]) / PANGO_SCALE, height);
        g_free(ranges);
        cairo_fill(cr_);
    }
    setSource(palette_.resolve(isEmpty ? ui::kSecondaryLabelColor : ui::kLabelColor), opacity);
    cairo_move_to(cr_, x, y);
    pango_cairo_show_layout(cr_, layout);
    if (!node->caret) return;
    PangoRectangle caret{};
    if (!isEmpty) pango_layout_get_cursor_pos(layout, static_cast<int>(node->caret->position), &caret, nullptr);
    setSource(palette_.resolve(ui::kLabelColor), opacity);
    cairo_rectangle(cr_, std::round(x + static_cast<double>(caret.x) / PANGO_SCALE), y, 1, height);
    cairo_fill(cr_);
}

}  // namespace morvel::x11
