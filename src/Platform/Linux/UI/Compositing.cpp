#include "Platform/Linux/UI/Compositing.h"

#include <utility>

namespace morvel::x11 {

Compositing::Compositing(XConnection& connection)
    : connection_(connection), manager_(connection, connection.atoms().compositorSelection) {
    const xcb_screen_t& screen = connection_.screen();
    opaque_ = {screen.root_visual, screen.root_depth, screen.default_colormap, false};
    findTranslucentVisual();
    told_ = format();
    managerChanges_ = manager_.observeChanges([this] { managerChanged(); });
}

Compositing::~Compositing() {
    if (translucent_.depth) xcb_free_colormap(connection_.get(), translucent_.colormap);
}

void Compositing::findTranslucentVisual() {
    for (auto depths = xcb_screen_allowed_depths_iterator(&connection_.screen()); depths.rem; xcb_depth_next(&depths)) {
        if (depths.data->depth != 32) continue;
        for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem; xcb_visualtype_next(&visuals)) {
            if (visuals.data->_class != XCB_VISUAL_CLASS_TRUE_COLOR || visuals.data->red_mask != 0xFF0000) continue;
            const xcb_colormap_t colormap = xcb_generate_id(connection_.get());
            xcb_create_colormap(connection_.get(), XCB_COLORMAP_ALLOC_NONE, colormap, connection_.root(),
                                visuals.data->visual_id);
            translucent_ = {visuals.data->visual_id, 32, colormap, true};
            return;
        }
    }
}

// Another manager in place of the old one changes nothing.
void Compositing::managerChanged() {
    const WindowFormat before = std::exchange(told_, format());
    if (before != told_) changed_.emit();
}

}  // namespace morvel::x11
