#include "Wallpaper.h"

#include <vector>

namespace morvel::tour {
namespace {

constexpr int kTop[3] = {0x2B, 0x4C, 0x7E};
constexpr int kBottom[3] = {0xA9, 0xC3, 0xD9};

}  // namespace

void paintWallpaper(e2e::Connection& connection) {
    const auto& screen = connection.screen();
    const int height = screen.height_in_pixels;
    std::vector<uint32_t> column;  // one pixel wide: the server repeats it
    for (int y = 0; y < height; ++y) {
        uint32_t pixel = 0;
        for (int i = 0; i < 3; ++i)
            pixel = pixel << 8 | static_cast<uint32_t>(kTop[i] + (kBottom[i] - kTop[i]) * y / height);
        column.push_back(pixel);
    }
    const xcb_pixmap_t tile = xcb_generate_id(connection);
    const xcb_gcontext_t context = xcb_generate_id(connection);
    xcb_create_pixmap(connection, screen.root_depth, tile, connection.root(), 1, screen.height_in_pixels);
    xcb_create_gc(connection, context, tile, 0, nullptr);
    xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, tile, context, 1, screen.height_in_pixels, 0, 0, 0,
                  screen.root_depth, static_cast<uint32_t>(column.size() * sizeof(uint32_t)),
                  reinterpret_cast<const uint8_t*>(column.data()));
    xcb_change_window_attributes(connection, connection.root(), XCB_CW_BACK_PIXMAP, &tile);
    xcb_clear_area(connection, 0, connection.root(), 0, 0, 0, 0);
    xcb_free_gc(connection, context);
    xcb_free_pixmap(connection, tile);
    connection.sync();
}

}  // namespace morvel::tour
