#include "Platform/Linux/System/SelectionOwner.h"

#include <xcb/xfixes.h>

#include <utility>

namespace morvel::x11 {

SelectionOwner::SelectionOwner(XConnection& connection, xcb_atom_t selection) {
    watch(connection, selection);
    const XPtr<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(connection.get(), xcb_get_selection_owner(connection.get(), selection), nullptr));
    if (owner) window_ = owner->owner;
}

void SelectionOwner::watch(XConnection& connection, xcb_atom_t selection) {
    const xcb_query_extension_reply_t* fixes = xcb_get_extension_data(connection.get(), &xcb_xfixes_id);
    if (!fixes || !fixes->present) return;
    // The extension serves only clients that have said which version they speak.
    xcb_discard_reply(connection.get(), xcb_xfixes_query_version(connection.get(), 1, 0).sequence);
    xcb_xfixes_select_selection_input(connection.get(), connection.root(), selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const uint8_t type = static_cast<uint8_t>(fixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    notices_ = connection.observeEventType(type, [this, selection](const xcb_generic_event_t& event) {
        const auto& notice = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
        if (notice.selection != selection) return;
        if (std::exchange(window_, notice.owner) != notice.owner) changed_.emit();
    });
}

}  // namespace morvel::x11
