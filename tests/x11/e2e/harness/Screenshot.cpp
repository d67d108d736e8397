#include "harness/Screenshot.h"

#include <cairo/cairo.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <stdexcept>

namespace morvel::e2e {
namespace {

constexpr uint32_t kColorBits = 0xFFFFFF;

Rgb rgbOf(uint32_t pixel) {
    return {static_cast<int>(pixel >> 16 & 255), static_cast<int>(pixel >> 8 & 255), static_cast<int>(pixel & 255)};
}

}  // namespace

int Rgb::distance(const Rgb& other) const {
    return std::max({std::abs(red - other.red), std::abs(green - other.green), std::abs(blue - other.blue)});
}

Screenshot::Screenshot(int width, int height)
    : width_(width), height_(height), pixels_(static_cast<size_t>(width) * static_cast<size_t>(height)) {}

Screenshot Screenshot::ofRoot(Connection& connection) {
    const auto& screen = connection.screen();
    const auto cookie = xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, connection.root(), 0, 0,
                                      screen.width_in_pixels, screen.height_in_pixels, ~0U);
    const Owned<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection, cookie, nullptr));
    Screenshot shot(screen.width_in_pixels, screen.height_in_pixels);
    const size_t size = shot.pixels_.size() * sizeof(uint32_t);
    if (!reply || static_cast<size_t>(xcb_get_image_data_length(reply.get())) < size)
        throw std::runtime_error("no picture of the screen");
    std::copy_n(xcb_get_image_data(reply.get()), size, reinterpret_cast<uint8_t*>(shot.pixels_.data()));
    for (auto& pixel : shot.pixels_) pixel &= kColorBits;
    return shot;
}

Box Screenshot::clipped(const Box& box) const {
    const int left = std::clamp(box.x, 0, width_);
    const int top = std::clamp(box.y, 0, height_);
    return {left, top, std::clamp(box.right(), left, width_) - left, std::clamp(box.bottom(), top, height_) - top};
}

Rgb Screenshot::at(Spot spot) const {
    if (!Box{0, 0, width_, height_}.contains(spot)) return {};
    return rgbOf(pixels_[static_cast<size_t>(spot.y * width_ + spot.x)]);
}

Rgb Screenshot::average(const Box& box) const {
    const Box area = clipped(box);
    if (area.isEmpty()) return {};
    long red = 0;
    long green = 0;
    long blue = 0;
    for (int y = area.y; y < area.bottom(); ++y)
        for (int x = area.x; x < area.right(); ++x) {
            const Rgb color = at({x, y});
            red += color.red;
            green += color.green;
            blue += color.blue;
        }
    const long count = static_cast<long>(area.width) * area.height;
    return {static_cast<int>(red / count), static_cast<int>(green / count), static_cast<int>(blue / count)};
}

Box Screenshot::differenceTo(const Screenshot& other, const Box& within, int tolerance) const {
    const Box area = clipped(within);
    Box difference;
    for (int y = area.y; y < area.bottom(); ++y)
        for (int x = area.x; x < area.right(); ++x)
            if (at({x, y}).distance(other.at({x, y})) > tolerance) difference = difference.joined({x, y, 1, 1});
    return difference;
}

int Screenshot::colorsIn(const Box& box) const {
    const Box area = clipped(box);
    std::set<uint32_t> colors;
    for (int y = area.y; y < area.bottom(); ++y)
        for (int x = area.x; x < area.right(); ++x) colors.insert(pixels_[static_cast<size_t>(y * width_ + x)]);
    return static_cast<int>(colors.size());
}

void Screenshot::writePng(const std::filesystem::path& file) const {
    std::vector<uint32_t> copy = pixels_;
    auto* surface = cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(copy.data()),
                                                        CAIRO_FORMAT_RGB24, width_, height_, width_ * 4);
    const auto status = cairo_surface_write_to_png(surface, file.c_str());
    cairo_surface_destroy(surface);
    if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error("cannot write " + file.string());
}

}  // namespace morvel::e2e
