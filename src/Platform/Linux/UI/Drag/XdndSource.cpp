#include "Platform/Linux/UI/Drag/XdndSource.h"

#include <utility>

namespace morvel::x11 {

namespace {

// For the answer about the place where it was dropped: a program that is that slow is not going to take it.
constexpr Duration kStatusTime = std::chrono::seconds(2);
// For taking it, which may mean a question to the person first.
constexpr Duration kFinishTime = std::chrono::seconds(5);

}  // namespace

XdndSource::XdndSource(XConnection& connection, MainLoop& mainLoop, xcb_window_t window, ui::DragItem item)
    : connection_(connection), mainLoop_(mainLoop), window_(window), item_(std::move(item)), finder_(connection) {
    events_ = connection_.observeWindow(window_, [this](const xcb_generic_event_t& event) { handle(event); });
    xcb_set_selection_owner(connection_.get(), window_, connection_.atoms().xdndSelection, connection_.lastTimestamp());
    // Answered before any search for a window is.
    const auto cookie =
        xcb_intern_atom(connection_.get(), 0, static_cast<uint16_t>(item_.type.size()), item_.type.data());
    connection_.whenReplied<xcb_intern_atom_reply_t>(cookie.sequence,
                                                     lifetime_.whileAlive([this](const xcb_intern_atom_reply_t* reply) {
                                                         if (reply) type_ = reply->atom;
                                                     }));
}

XdndSource::~XdndSource() {
    if (!awaitsFinish_) leave();
}

void XdndSource::movedTo(Point<RootSpace> location) {
    location_ = location;
    search();
}

// One search at a time; where the pointer is by then is looked at next.
void XdndSource::search() {
    if (finder_.isBusy()) {
        searchesAgain_ = true;
        return;
    }
    searchesAgain_ = false;
    finder_.find(location_, [this](std::optional<XdndWindow> window) {
        found(window);
        if (searchesAgain_) return search();
        dropIfSettled();
    });
}

void XdndSource::found(const std::optional<XdndWindow>& window) {
    const auto wanted = type_ ? window : std::nullopt;
    if (target_ != wanted) {
        if (target_) send(connection_.atoms().xdndLeave, XdndLeave{window_}.packed());
        target_ = wanted;
        awaitsStatus_ = hasMoved_ = false;
        accepted_ = 0;
        if (target_) send(connection_.atoms().xdndEnter, XdndEnter{window_, target_->version, false, {type_}}.packed());
    }
    if (target_) sendPosition();
}

void XdndSource::sendPosition() {
    if (std::exchange(awaitsStatus_, true)) {
        hasMoved_ = true;
        return;
    }
    hasMoved_ = false;
    const Atoms& atoms = connection_.atoms();
    send(atoms.xdndPosition,
         XdndPosition{window_, location_, connection_.lastTimestamp(), atoms.xdndActionMove}.packed());
}

void XdndSource::leave() {
    finder_.cancel();
    searchesAgain_ = false;
    if (target_) send(connection_.atoms().xdndLeave, XdndLeave{window_}.packed());
    target_.reset();
    awaitsStatus_ = hasMoved_ = false;
    accepted_ = 0;
}

void XdndSource::handle(const xcb_generic_event_t& event) {
    const uint8_t type = typeOf(event);
    if (type == XCB_SELECTION_REQUEST)
        return answerRequest(reinterpret_cast<const xcb_selection_request_event_t&>(event));
    if (type != XCB_CLIENT_MESSAGE) return;
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    const uint32_t* data = message.data.data32;
    if (message.format != 32 || !target_ || data[0] != target_->window) return;
    if (message.type == connection_.atoms().xdndStatus) return statusCame(XdndStatus::unpacked(data));
    if (message.type == connection_.atoms().xdndFinished && awaitsFinish_) {
        // Before the fifth version nothing is said about what was done with it.
        const XdndFinished finished = XdndFinished::unpacked(data);
        if (target_->version < 5) return finish(operationOf(accepted_));
        finish(finished.isAccepted ? operationOf(finished.action) : ui::DragOperation::None);
    }
}

void XdndSource::statusCame(const XdndStatus& status) {
    if (awaitsFinish_) return;
    awaitsStatus_ = false;
    accepted_ = status.accepts ? status.action : 0;
    if (hasMoved_) return sendPosition();
    dropIfSettled();
}

void XdndSource::drop(std::function<void(ui::DragOperation)> done) {
    done_ = std::move(done);
    deadline_ = mainLoop_.after(kStatusTime, [this] { finish(ui::DragOperation::None); });
    dropIfSettled();
}

void XdndSource::dropIfSettled() {
    if (!done_ || awaitsFinish_ || finder_.isBusy() || awaitsStatus_) return;
    if (!target_ || !accepted_) return finish(ui::DragOperation::None);
    awaitsFinish_ = true;
    send(connection_.atoms().xdndDrop, XdndDrop{window_, connection_.lastTimestamp()}.packed());
    deadline_ = mainLoop_.after(kFinishTime, [this] { finish(ui::DragOperation::None); });
}

void XdndSource::finish(ui::DragOperation operation) {
    deadline_.reset();
    if (!awaitsFinish_) leave();
    if (const auto done = std::exchange(done_, nullptr)) done(operation);
}

// Older programs name no property: the type's name is it then.
void XdndSource::answerRequest(const xcb_selection_request_event_t& request) {
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    if (type_ && request.selection == connection_.atoms().xdndSelection && request.target == type_) {
        notice.property = request.property ? request.property : request.target;
        xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, request.requestor, notice.property, type_, 8,
                            static_cast<uint32_t>(item_.text.size()), item_.text.data());
    }
    xcb_send_event(connection_.get(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&notice));
}

void XdndSource::send(xcb_atom_t type, const MessageData& data) {
    connection_.sendMessage(target_->receiver, target_->window, type, data);
}

ui::DragOperation XdndSource::operationOf(xcb_atom_t action) const {
    if (!action) return ui::DragOperation::None;
    return action == connection_.atoms().xdndActionMove ? ui::DragOperation::Move : ui::DragOperation::Copy;
}

}  // namespace morvel::x11
