#include "Platform/Linux/Icons/XImage.h"

#include <algorithm>

namespace morvel::x11 {

namespace {

// One for the bar, one for a list, and one more for a bar of another height.
constexpr size_t kMostSizes = 3;

bool hasSize(const SurfacePtr& surface, int width, int height) {
    return cairo_image_surface_get_width(surface.get()) == width &&
           cairo_image_surface_get_height(surface.get()) == height;
}

}  // namespace

cairo_surface_t* XImage::scaled(int width, int height) const {
    if (hasSize(surface_, width, height)) return surface();
    const auto known =
        std::ranges::find_if(scaled_, [&](const SurfacePtr& surface) { return hasSize(surface, width, height); });
    if (known != scaled_.end()) {
        std::rotate(known, known + 1, scaled_.end());
        return scaled_.back().get();
    }
    SurfacePtr made = scaledSurface(*this, width, height);
    if (!made) return surface();
    if (scaled_.size() == kMostSizes) scaled_.erase(scaled_.begin());
    return scaled_.emplace_back(std::move(made)).get();
}

SurfacePtr scaledSurface(const XImage& image, int width, int height) {
    SurfacePtr surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
    cairo_t* cr = cairo_create(surface.get());
    cairo_scale(cr, static_cast<double>(width) / image.pixelWidth(), static_cast<double>(height) / image.pixelHeight());
    cairo_set_source_surface(cr, image.surface(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_BEST);
    cairo_pattern_set_extend(cairo_get_source(cr), CAIRO_EXTEND_PAD);  // no faded rim
    cairo_paint(cr);
    cairo_destroy(cr);
    return surface;
}

}  // namespace morvel::x11
