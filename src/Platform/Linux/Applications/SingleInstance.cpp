#include "Platform/Linux/Applications/SingleInstance.h"

#include <utility>

namespace morvel::x11 {

SingleInstance::SingleInstance(XConnection& connection, std::function<void()> openedAgain)
    : connection_(connection),
      window_(xcb_generate_id(connection.get())),
      ownership_(connection.registerOwnWindow(window_)) {
    xcb_create_window(connection.get(), 0, window_, connection.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    const xcb_atom_t message = connection.atoms().morvelInstance;
    messages_ = connection.observeWindow(
        window_, [message, openedAgain = std::move(openedAgain)](const xcb_generic_event_t& event) {
            if (typeOf(event) != XCB_CLIENT_MESSAGE) return;
            if (reinterpret_cast<const xcb_client_message_event_t&>(event).type == message) openedAgain();
        });
}

SingleInstance::~SingleInstance() {
    xcb_destroy_window(connection_.get(), window_);
}

bool SingleInstance::claim() {
    const xcb_atom_t selection = connection_.atoms().morvelInstance;
    xcb_connection_t* const x = connection_.get();
    const auto owner = [&] {
        const XPtr<xcb_get_selection_owner_reply_t> reply(
            xcb_get_selection_owner_reply(x, xcb_get_selection_owner(x, selection), nullptr));
        return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
    };
    // Nobody may claim it between the question and the claim.
    xcb_grab_server(x);
    const xcb_window_t other = owner();
    if (other == XCB_WINDOW_NONE) xcb_set_selection_owner(x, window_, selection, XCB_CURRENT_TIME);
    xcb_ungrab_server(x);
    xcb_flush(x);
    if (other == XCB_WINDOW_NONE) return true;

    connection_.sendMessage(other, other, selection, {});
    owner();  // the message is with the server before this process ends
    return false;
}

}  // namespace morvel::x11
