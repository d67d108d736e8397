#include "Platform/Linux/UI/Drag/SelectionFetch.h"

#include <utility>

#include "Platform/Linux/System/Property.h"

namespace morvel::x11 {

SelectionFetch::SelectionFetch(XConnection& connection, xcb_atom_t selection, xcb_atom_t type, xcb_timestamp_t time,
                               Fetched fetched)
    : connection_(connection),
      window_(xcb_generate_id(connection.get())),
      selection_(selection),
      type_(type),
      fetched_(std::move(fetched)),
      ownership_(connection.registerOwnWindow(window_)) {
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection.get(), 0, window_, connection.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    events_ = connection.observeWindow(window_, [this](const xcb_generic_event_t& event) { handle(event); });
    xcb_convert_selection(connection.get(), window_, selection, type, selection, time);
}

SelectionFetch::~SelectionFetch() {
    xcb_destroy_window(connection_.get(), window_);
}

void SelectionFetch::handle(const xcb_generic_event_t& event) {
    switch (typeOf(event)) {
        case XCB_SELECTION_NOTIFY: {
            const auto& notice = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
            if (notice.selection != selection_ || notice.target != type_ || isInPieces_) return;
            if (notice.property != selection_) return finish(std::nullopt);
            return read();
        }
        case XCB_PROPERTY_NOTIFY: {
            const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            if (isInPieces_ && notice.atom == selection_ && notice.state == XCB_PROPERTY_NEW_VALUE) read();
            return;
        }
        default:
            return;
    }
}

// Deleting the property is also what asks for the next piece.
void SelectionFetch::read() {
    const auto cookie = xcb_get_property(connection_.get(), 1, window_, selection_, XCB_GET_PROPERTY_TYPE_ANY, 0,
                                         kMaxFetchedBytes / sizeof(uint32_t));
    connection_.whenReplied<xcb_get_property_reply_t>(
        cookie.sequence, lifetime_.whileAlive([this](const xcb_get_property_reply_t* reply) { arrived(reply); }));
}

void SelectionFetch::arrived(const xcb_get_property_reply_t* reply) {
    if (!fetched_) return;
    if (reply && reply->type == connection_.atoms().incr && !isInPieces_) {
        isInPieces_ = true;
        return;
    }
    const auto piece = bytes(reply);
    if (!piece || reply->bytes_after > 0 || bytes_.size() + piece->size() > kMaxFetchedBytes)
        return finish(std::nullopt);
    bytes_ += *piece;
    if (!isInPieces_ || piece->empty()) finish(std::move(bytes_));
}

void SelectionFetch::finish(std::optional<std::string> bytes) {
    if (const auto fetched = std::exchange(fetched_, nullptr)) fetched(std::move(bytes));
}

}  // namespace morvel::x11
