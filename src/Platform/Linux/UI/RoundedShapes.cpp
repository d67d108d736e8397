#include "Platform/Linux/UI/RoundedShapes.h"

#include <algorithm>
#include <numbers>

namespace morvel::x11 {

namespace {

// A byte each. What is larger, such as a popover, is not painted often.
constexpr long kMostPixels = 16384;
// More than the sizes of a bar's views. Only something that grows step by step has more, and then they are of no use.
constexpr size_t kMostMasks = 32;

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

void RoundedShapes::fill(cairo_t* cr, const PixelRect& pixels, double radius) {
    paint(cr, pixels, {pixels.width, pixels.height, radius, 0});
}

void RoundedShapes::outline(cairo_t* cr, const PixelRect& pixels, double radius, double lineWidth) {
    paint(cr, pixels, {pixels.width, pixels.height, radius, lineWidth});
}

void RoundedShapes::paint(cairo_t* cr, double x, double y, const Shape& shape) {
    const double line = shape.lineWidth;
    addRoundedRect(cr, x + line / 2, y + line / 2, shape.width - line, shape.height - line, shape.radius - line / 2);
    if (line <= 0) return cairo_fill(cr);
    cairo_set_line_width(cr, line);
    cairo_stroke(cr);
}

void RoundedShapes::paint(cairo_t* cr, const PixelRect& pixels, const Shape& shape) {
    if (pixels.isEmpty()) return;
    const bool isPlain = shape.radius <= 0 && shape.lineWidth <= 0;
    if (isPlain || pixels.area() > kMostPixels) return paint(cr, pixels.x, pixels.y, shape);
    if (masks_.size() >= kMostMasks && !masks_.contains(shape)) masks_.clear();
    SurfacePtr& mask = masks_[shape];
    if (!mask) {
        mask.reset(cairo_image_surface_create(CAIRO_FORMAT_A8, pixels.width, pixels.height));
        cairo_t* onMask = cairo_create(mask.get());
        paint(onMask, 0, 0, shape);
        cairo_destroy(onMask);
    }
    cairo_mask_surface(cr, mask.get(), pixels.x, pixels.y);
}

}  // namespace morvel::x11
