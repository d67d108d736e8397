#include "Platform/Linux/UI/Compositing.h"

#include <utility>

namespace morvel::x11 {

Compositing::Compositing(XConnection& connection) : connection_(connection) {
    const xcb_screen_t& screen = connection_.screen();
    opaque_ = {screen.root_visual, screen.root_depth, screen.default_colormap, false};
    findTranslucentVisual();

    selection_ = connection_.atoms().compositorSelection;
    connection_.addRootEvents(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    rootEvents_ = connection_.observeRoot([this](const xcb_generic_event_t& event) {
        // A manager that takes over a selection says so on the root window.
        if ((event.response_type & 0x7F) != XCB_CLIENT_MESSAGE) return;
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (message.type == connection_.atoms().manager && message.data.data32[1] == selection_) askForOwner();
    });
    const XPtr<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        connection_.get(), xcb_get_selection_owner(connection_.get(), selection_), nullptr));
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

void Compositing::askForOwner() {
    connection_.whenReplied<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(connection_.get(), selection_).sequence,
        [this](const xcb_get_selection_owner_reply_t* reply) {
            if (reply) setOwner(reply->owner);
        });
}

void Compositing::setOwner(xcb_window_t owner) {
    const WindowFormat before = format();
    owner_ = owner;
    ownerEvents_.reset();
    if (owner) {
        const uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_.get(), owner, XCB_CW_EVENT_MASK, &mask);
        ownerEvents_ = connection_.observeWindow(owner, [this](const xcb_generic_event_t& event) {
            if ((event.response_type & 0x7F) == XCB_DESTROY_NOTIFY) askForOwner();
        });
    }
    if (format() != before) changed_.emit();
}

}  // namespace morvel::x11
