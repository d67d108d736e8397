#include "Platform/Linux/UI/Compositing.h"

#include <xcb/xfixes.h>

namespace morvel::x11 {

Compositing::Compositing(XConnection& connection) : connection_(connection) {
    const xcb_screen_t& screen = connection_.screen();
    opaque_ = {screen.root_visual, screen.root_depth, screen.default_colormap, false};
    findTranslucentVisual();

    const xcb_atom_t selection = connection_.atoms().compositorSelection;
    watchOwner(selection);
    const XPtr<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        connection_.get(), xcb_get_selection_owner(connection_.get(), selection), nullptr));
    if (owner) setOwner(owner->owner);
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

void Compositing::watchOwner(xcb_atom_t selection) {
    const xcb_query_extension_reply_t* fixes = xcb_get_extension_data(connection_.get(), &xcb_xfixes_id);
    if (!fixes || !fixes->present) return;
    // The extension serves only clients that have said which version they speak.
    xcb_discard_reply(connection_.get(), xcb_xfixes_query_version(connection_.get(), 1, 0).sequence);
    xcb_xfixes_select_selection_input(connection_.get(), connection_.root(), selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const uint8_t type = static_cast<uint8_t>(fixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    ownerChanges_ = connection_.observeEventType(type, [this, selection](const xcb_generic_event_t& event) {
        const auto& notice = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
        if (notice.selection == selection) setOwner(notice.owner);
    });
}

void Compositing::setOwner(xcb_window_t owner) {
    const WindowFormat before = format();
    owner_ = owner;
    if (format() != before) changed_.emit();
}

}  // namespace morvel::x11
