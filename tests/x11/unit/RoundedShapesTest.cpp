#include "Platform/Linux/UI/RoundedShapes.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

namespace morvel::x11 {
namespace {

constexpr int kWidth = 300, kHeight = 200;

SurfacePtr painted(const std::function<void(cairo_t*)>& paint) {
    SurfacePtr surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kWidth, kHeight));
    cairo_t* cr = cairo_create(surface.get());
    cairo_set_source_rgba(cr, 0.9, 0.5, 0.1, 0.8);
    paint(cr);
    cairo_destroy(cr);
    cairo_surface_flush(surface.get());
    return surface;
}

int largestDifference(const SurfacePtr& a, const SurfacePtr& b) {
    const unsigned char *left = cairo_image_surface_get_data(a.get()), *right = cairo_image_surface_get_data(b.get());
    int largest = 0;
    for (int i = 0; i < kWidth * kHeight * 4; ++i) largest = std::max(largest, std::abs(left[i] - right[i]));
    return largest;
}

TEST(RoundedShapes, LookAsIfPaintedByPath) {
    RoundedShapes shapes;
    const PixelRect button{7, 5, 80, 30}, moved{100, 40, 80, 30}, popover{10, 20, 250, 150}, pill{3, 3, 20, 8};
    for (int round = 0; round < 2; ++round) {  // the second time from what is kept
        for (const PixelRect& r : {button, moved, popover, pill}) {
            const auto filled = painted([&](cairo_t* cr) { shapes.fill(cr, r, 6); });
            const auto fillPath = painted([&](cairo_t* cr) {
                addRoundedRect(cr, r.x, r.y, r.width, r.height, 6);
                cairo_fill(cr);
            });
            EXPECT_LE(largestDifference(filled, fillPath), 2) << r.width << " wide";
            const auto outlined = painted([&](cairo_t* cr) { shapes.outline(cr, r, 6, 2); });
            const auto linePath = painted([&](cairo_t* cr) {
                addRoundedRect(cr, r.x + 1, r.y + 1, r.width - 2, r.height - 2, 5);
                cairo_set_line_width(cr, 2);
                cairo_stroke(cr);
            });
            EXPECT_LE(largestDifference(outlined, linePath), 2) << r.width << " wide";
        }
    }
    const auto nothing = painted([](cairo_t*) {});
    const auto empty = painted([&](cairo_t* cr) { shapes.fill(cr, {5, 5, 0, 30}, 6); });
    EXPECT_EQ(largestDifference(empty, nothing), 0);
}

}  // namespace
}  // namespace morvel::x11
