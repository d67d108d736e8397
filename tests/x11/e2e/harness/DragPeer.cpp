#include "harness/DragPeer.h"

#include <algorithm>

namespace morvel::e2e {

DragPeer::DragPeer(XServer& server, Desktop& desktop, const Box& box)
    : desktop_(desktop), connection_(server.display()), window_(xcb_generate_id(connection_)) {
    const uint32_t values[] = {0x557744, 1, XCB_EVENT_MASK_PROPERTY_CHANGE};
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, connection_.root(), static_cast<int16_t>(box.x),
                      static_cast<int16_t>(box.y), static_cast<uint16_t>(std::max(1, box.width)),
                      static_cast<uint16_t>(std::max(1, box.height)), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    if (!box.isEmpty()) {
        connection_.setCardinals(window_, "XdndAware", "ATOM", {5});
        xcb_map_window(connection_, window_);
    }
    connection_.sync();
    desktop_.attend(*this);
}

DragPeer::~DragPeer() {
    desktop_.forget(*this);
}

void DragPeer::offer(const std::string& type, std::string bytes) {
    offers_[type] = std::move(bytes);
    xcb_set_selection_owner(connection_, window_, connection_.atom("XdndSelection"), XCB_CURRENT_TIME);
    connection_.sync();
}

void DragPeer::enter(xcb_window_t target, const std::vector<std::string>& types, uint32_t version) {
    std::vector<uint32_t> atoms;
    for (const auto& type : types) atoms.push_back(connection_.atom(type));
    const bool hasList = atoms.size() > 3;
    if (hasList) connection_.setCardinals(window_, "XdndTypeList", "ATOM", atoms);
    atoms.resize(3);
    send(target, "XdndEnter", {window_, version << 24 | (hasList ? 1U : 0U), atoms[0], atoms[1], atoms[2]});
}

void DragPeer::moveTo(xcb_window_t target, Spot spot, const std::string& action) {
    const auto place = static_cast<uint32_t>(spot.x) << 16 | static_cast<uint32_t>(spot.y);
    send(target, "XdndPosition", {window_, 0, place, XCB_CURRENT_TIME, connection_.atom(action)});
}

void DragPeer::send(xcb_window_t target, const std::string& message, const std::array<uint32_t, 5>& data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = target;
    event.type = connection_.atom(message);
    std::ranges::copy(data, event.data.data32);
    xcb_send_event(connection_, 0, target, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&event));
    connection_.flush();
}

void DragPeer::destroyWindow() {
    xcb_destroy_window(connection_, window_);
    connection_.flush();
}

size_t DragPeer::count(std::string_view name) const {
    return static_cast<size_t>(std::ranges::count(messages_, name, &Message::name));
}

const DragPeer::Message* DragPeer::last(std::string_view name) const {
    const auto found = std::find_if(messages_.rbegin(), messages_.rend(), [&](auto& m) { return m.name == name; });
    return found == messages_.rend() ? nullptr : &*found;
}

void DragPeer::serve() {
    while (const auto event = connection_.next()) {
        switch (event->response_type & 0x7F) {
            case XCB_CLIENT_MESSAGE:
                answer(reinterpret_cast<const xcb_client_message_event_t&>(*event));
                break;
            case XCB_SELECTION_REQUEST:
                if (!isSilent_) handOut(reinterpret_cast<const xcb_selection_request_event_t&>(*event));
                break;
            case XCB_PROPERTY_NOTIFY:
                handOutPiece(reinterpret_cast<const xcb_property_notify_event_t&>(*event));
                break;
            case XCB_SELECTION_NOTIFY:
                takeIn();
                break;
            default:
                break;
        }
    }
}

void DragPeer::answer(const xcb_client_message_event_t& event) {
    Message message{connection_.atomName(event.type), event.window, {}};
    std::copy_n(event.data.data32, 5, message.data.begin());
    messages_.push_back(message);
    if (isSilent_) return;
    const uint32_t takes = accepted_.empty() ? 0 : 1;
    if (message.name == "XdndEnter") partner_ = message.data[0];
    if (message.name == "XdndPosition")
        send(partner_, "XdndStatus", {window_, takes | 2, 0, 0, connection_.atom("XdndActionMove")});
    if (message.name == "XdndDrop")
        xcb_convert_selection(connection_, window_, connection_.atom("XdndSelection"), connection_.atom(accepted_),
                              connection_.atom("DROPPED"), message.data[2]);
    connection_.flush();
}

void DragPeer::handOut(const xcb_selection_request_event_t& request) {
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    notice.time = request.time;
    const auto found = offers_.find(connection_.atomName(request.target));
    if (found != offers_.end()) {
        notice.property = request.property;
        if (pieceSize_) {
            request_ = request;
            remaining_ = found->second;
            const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
            xcb_change_window_attributes(connection_, request.requestor, XCB_CW_EVENT_MASK, &events);
            connection_.setCardinals(request.requestor, "XdndSelection", "INCR", {1});
        } else {
            xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, request.requestor, request.property, request.target,
                                8, static_cast<uint32_t>(found->second.size()), found->second.data());
        }
    }
    xcb_send_event(connection_, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&notice));
    connection_.flush();
}

// An empty piece is the end.
void DragPeer::handOutPiece(const xcb_property_notify_event_t& taken) {
    if (!request_.requestor || taken.window != request_.requestor || taken.state != XCB_PROPERTY_DELETE) return;
    const std::string piece = remaining_.substr(0, *pieceSize_);
    remaining_.erase(0, piece.size());
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, request_.requestor, request_.property, request_.target, 8,
                        static_cast<uint32_t>(piece.size()), piece.data());
    if (piece.empty()) request_ = {};
    connection_.flush();
}

void DragPeer::takeIn() {
    received_ = connection_.bytes(window_, "DROPPED");
    send(partner_, "XdndFinished", {window_, 1, connection_.atom("XdndActionMove")});
}

}  // namespace morvel::e2e
