#include "harness/DragPeer.h"

#include <algorithm>

namespace morvel::e2e {

DragPeer::DragPeer(XServer& server, Desktop& desktop, const Box& box)
    : desktop_(desktop),
      connection_(server.display()),
      window_(connection_.makeWindow({box.x, box.y, std::max(1, box.width), std::max(1, box.height)}, 0x557744,
                                     XCB_EVENT_MASK_PROPERTY_CHANGE, false)) {
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
    connection_.own(window_, "XdndSelection");
}

void DragPeer::enter(xcb_window_t target, const std::vector<std::string>& types, uint32_t version) {
    std::vector<uint32_t> atoms;
    for (const auto& type : types) atoms.push_back(connection_.atom(type));
    const bool hasList = atoms.size() > 3;
    if (hasList) connection_.setCardinals(window_, "XdndTypeList", "ATOM", atoms);
    atoms.resize(3);
    send(target, "XdndEnter", {window_, version << 24 | (hasList ? 1U : 0U), atoms[0], atoms[1], atoms[2]});
}

void DragPeer::moveTo(xcb_window_t target, Spot spot) {
    const auto place = static_cast<uint32_t>(spot.x) << 16 | static_cast<uint32_t>(spot.y);
    send(target, "XdndPosition", {window_, 0, place, XCB_CURRENT_TIME, connection_.atom("XdndActionCopy")});
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
        const auto type = typeOf(event);
        if (type == XCB_CLIENT_MESSAGE) answer(as<xcb_client_message_event_t>(event));
        if (type == XCB_SELECTION_REQUEST && !isSilent_) handOut(as<xcb_selection_request_event_t>(event));
        if (type == XCB_PROPERTY_NOTIFY) handOutPiece(as<xcb_property_notify_event_t>(event));
        if (type == XCB_SELECTION_NOTIFY) takeIn();
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
    const auto found = offers_.find(connection_.atomName(request.target));
    if (found == offers_.end()) return connection_.answer(request, XCB_NONE);
    if (pieceSize_) {
        request_ = request;
        remaining_ = found->second;
        connection_.listen(request.requestor, XCB_EVENT_MASK_PROPERTY_CHANGE);
        connection_.setCardinals(request.requestor, "XdndSelection", "INCR", {1});
    } else {
        connection_.setBytes(request.requestor, request.property, request.target, found->second);
    }
    connection_.answer(request, request.property);
}

// An empty piece is the end.
void DragPeer::handOutPiece(const xcb_property_notify_event_t& taken) {
    if (!request_.requestor || taken.window != request_.requestor || taken.state != XCB_PROPERTY_DELETE) return;
    const std::string piece = remaining_.substr(0, *pieceSize_);
    remaining_.erase(0, piece.size());
    connection_.setBytes(request_.requestor, request_.property, request_.target, piece);
    if (piece.empty()) request_ = {};
    connection_.flush();
}

void DragPeer::takeIn() {
    received_ = connection_.bytes(window_, "DROPPED");
    send(partner_, "XdndFinished", {window_, 1, connection_.atom("XdndActionMove")});
}

}  // namespace morvel::e2e
