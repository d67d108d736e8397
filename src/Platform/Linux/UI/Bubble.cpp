#include "Platform/Linux/UI/Bubble.h"

#include <numbers>

#include "Platform/Linux/Icons/XImage.h"
#include "Platform/Linux/UI/RoundedShapes.h"

namespace morvel::x11 {

namespace {

constexpr int kHalfCovered = 128;

}  // namespace

// Clockwise from the top left corner. The inset keeps the hairline inside, where a shaped window shows it.
void Bubble::addPath(cairo_t* cr, double inset) const {
    const double left = body.x + inset, right = body.maxX() - inset, top = body.y + inset, bottom = body.maxY() - inset;
    const double r = radius - inset, quarter = std::numbers::pi / 2, half = kArrowWidth / 2 - inset / 2;
    // The sides of the arrow swing out of the body and meet in a blunt tip.
    const auto addArrow = [&](double base, double out, double direction) {
        const double tip = base + out * (kArrowHeight - inset / 2), x = arrow->tipX;
        cairo_line_to(cr, x - direction * half, base);
        cairo_curve_to(cr, x - direction * half * 0.45, base, x - direction * half * 0.3, tip, x, tip);
        cairo_curve_to(cr, x + direction * half * 0.3, tip, x + direction * half * 0.45, base, x + direction * half,
                       base);
    };
    cairo_new_path(cr);
    cairo_arc(cr, left + r, top + r, r, 2 * quarter, 3 * quarter);
    if (arrow && arrow->side == ui::Edge::Top) addArrow(top, -1, 1);
    cairo_arc(cr, right - r, top + r, r, -quarter, 0);
    cairo_arc(cr, right - r, bottom - r, r, 0, quarter);
    if (arrow && arrow->side == ui::Edge::Bottom) addArrow(bottom, 1, -1);
    cairo_arc(cr, left + r, bottom - r, r, quarter, 2 * quarter);
    cairo_close_path(cr);
}

void Bubble::paint(cairo_t* cr, const ui::RGBA& fill, const ui::RGBA& border, bool isBlended) const {
    if (!isBlended) {
        for (const ui::RGBA& color : {fill, border}) {
            cairo_set_source_rgba(cr, color.red, color.green, color.blue, color.alpha);
            cairo_paint(cr);
        }
    }
    cairo_set_source_rgba(cr, fill.red, fill.green, fill.blue, fill.alpha);
    addPath(cr, 0);
    cairo_fill(cr);
    cairo_set_source_rgba(cr, border.red, border.green, border.blue, border.alpha);
    cairo_set_line_width(cr, 1);
    addPath(cr, 0.5);
    cairo_stroke(cr);
}

void Bubble::clipToBody(cairo_t* cr) const {
    addRoundedRect(cr, body.x + 1, body.y + 1, body.width - 2, body.height - 2, radius - 1);
    cairo_clip(cr);
}

std::vector<PixelRect> Bubble::coverage(int width, int height) const {
    const SurfacePtr mask(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height));
    cairo_t* cr = cairo_create(mask.get());
    addPath(cr, 0);
    cairo_fill(cr);
    cairo_destroy(cr);
    cairo_surface_flush(mask.get());
    const unsigned char* row = cairo_image_surface_get_data(mask.get());
    const int stride = cairo_image_surface_get_stride(mask.get());
    std::vector<PixelRect> runs;
    // The outline has no gaps in a row, so a row is one run; equal rows become one rectangle.
    for (int y = 0; row && y < height; ++y, row += stride) {
        int start = 0, end = width;
        while (start < end && row[start] < kHalfCovered) ++start;
        while (end > start && row[end - 1] < kHalfCovered) --end;
        if (start == end) continue;
        if (!runs.empty() && runs.back().maxY() == y && runs.back().x == start && runs.back().width == end - start)
            ++runs.back().height;
        else
            runs.push_back({start, y, end - start, 1});
    }
    return runs;
}

}  // namespace morvel::x11
