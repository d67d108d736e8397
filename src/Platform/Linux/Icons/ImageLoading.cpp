#include "Platform/Linux/Icons/ImageLoading.h"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <sys/stat.h>

#include <algorithm>
#include <cmath>

#include "Platform/Linux/System/GLibPointers.h"

namespace morvel::x11 {

namespace {

constexpr off_t kLargestFile = 8 << 20;
constexpr int kLargestExtent = 4096;
constexpr uint32_t kLargestPropertyExtent = 1024;

// Null when there is not enough memory for it.
SurfacePtr makeSurface(int width, int height) {
    SurfacePtr surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, std::max(width, 1), std::max(height, 1)));
    return cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS ? std::move(surface) : nullptr;
}

uint32_t premultiplied(uint32_t alpha, uint32_t red, uint32_t green, uint32_t blue) {
    const auto part = [alpha](uint32_t component) { return (component * alpha + 127) / 255; };
    return alpha << 24 | part(red) << 16 | part(green) << 8 | part(blue);
}

uint32_t* rowOf(cairo_surface_t* surface, int y) {
    const auto stride = static_cast<size_t>(cairo_image_surface_get_stride(surface));
    return reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(surface) + stride * static_cast<size_t>(y));
}

SurfacePtr fromPixbuf(const GdkPixbuf* pixbuf) {
    const int width = gdk_pixbuf_get_width(pixbuf), height = gdk_pixbuf_get_height(pixbuf);
    const int channels = gdk_pixbuf_get_n_channels(pixbuf);
    const auto stride = static_cast<size_t>(gdk_pixbuf_get_rowstride(pixbuf));
    SurfacePtr surface = makeSurface(width, height);
    if (!surface) return nullptr;
    const guchar* pixels = gdk_pixbuf_read_pixels(pixbuf);
    for (int y = 0; y < height; ++y) {
        const guchar* from = pixels + stride * static_cast<size_t>(y);
        uint32_t* to = rowOf(surface.get(), y);
        for (int x = 0; x < width; ++x, from += channels)
            to[x] = premultiplied(channels == 4 ? from[3] : 255, from[0], from[1], from[2]);
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

bool isReasonable(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > kLargestFile) return false;
    int width = 0, height = 0;
    if (!gdk_pixbuf_get_file_info(path.c_str(), &width, &height)) return false;
    return width <= kLargestExtent && height <= kLargestExtent;
}

std::shared_ptr<const XImage> asImage(SurfacePtr surface, Size points, ImageKind kind = ImageKind::Picture) {
    return surface ? std::make_shared<XImage>(std::move(surface), points, kind) : nullptr;
}

}  // namespace

std::shared_ptr<const XImage> loadImage(const std::string& path, int size) {
    if (!isReasonable(path)) return nullptr;
    const GPtr<GdkPixbuf> pixbuf(gdk_pixbuf_new_from_file_at_scale(path.c_str(), size, size, TRUE, nullptr));
    if (!pixbuf) return nullptr;
    const Size points{double(gdk_pixbuf_get_width(pixbuf.get())), double(gdk_pixbuf_get_height(pixbuf.get()))};
    return asImage(fromPixbuf(pixbuf.get()), points);
}

std::optional<PropertyIcon> choosePropertyIcon(std::span<const uint32_t> property, int size) {
    std::optional<PropertyIcon> best;
    while (property.size() > 2) {
        const uint32_t width = property[0], height = property[1];
        if (width == 0 || height == 0 || width > kLargestPropertyExtent || height > kLargestPropertyExtent) break;
        const size_t count = size_t{width} * height;
        if (property.size() - 2 < count) break;
        const PropertyIcon icon{int(width), int(height), property.subspan(2, count)};
        const int extent = std::max(icon.width, icon.height), known = best ? std::max(best->width, best->height) : 0;
        const bool isBetter = extent <= size ? known > size || extent > known : known > size && extent < known;
        if (!best || isBetter) best = icon;
        property = property.subspan(2 + count);
    }
    return best;
}

std::shared_ptr<const XImage> makeImage(const PropertyIcon& icon) {
    SurfacePtr surface = makeSurface(icon.width, icon.height);
    if (!surface) return nullptr;
    for (int y = 0; y < icon.height; ++y) {
        uint32_t* to = rowOf(surface.get(), y);
        const auto from = icon.pixels.subspan(size_t(y) * size_t(icon.width), size_t(icon.width));
        std::transform(from.begin(), from.end(), to, [](uint32_t pixel) {
            return premultiplied(pixel >> 24, pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
        });
    }
    cairo_surface_mark_dirty(surface.get());
    return asImage(std::move(surface), {double(icon.width), double(icon.height)});
}

std::shared_ptr<const XImage> scaled(const XImage& image, Size size) {
    const auto pixels = [](double points) { return int(std::ceil(std::clamp(points, 1.0, double(kLargestExtent)))); };
    return asImage(scaledSurface(image, pixels(size.width), pixels(size.height)), size,
                   image.isTemplate() ? ImageKind::Template : ImageKind::Picture);
}

std::shared_ptr<const XImage> emptyImage(Size size) {
    return asImage(makeSurface(1, 1), size);
}

}  // namespace morvel::x11
