#include "Platform/Linux/System/XConnection.h"

#include <poll.h>
#include <xcb/bigreq.h>
#include <xcb/randr.h>
#include <xcb/xcbext.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <utility>

namespace morvel::x11 {

namespace {

// A client that changes its title without pause must not keep timers and posted work from their turn; and no ordinary
// burst, such as a session's start, should be cut into several batches.
constexpr size_t kLargestBatch = 4096;
// A server that is asked nothing more is not waited for longer than this.
constexpr auto kDeliveryPatience = std::chrono::milliseconds(500);
constexpr uint8_t kErrorResponse = 0;

// Where the protocol puts the window that an event is about.
std::optional<xcb_window_t> windowOf(const xcb_generic_event_t& event) {
    const auto at = [&event](size_t offset) {
        xcb_window_t window = 0;
        std::memcpy(&window, reinterpret_cast<const char*>(&event) + offset, sizeof window);
        return window;
    };
    const uint8_t type = typeOf(event);
    if (type >= XCB_KEY_PRESS && type <= XCB_LEAVE_NOTIFY) return at(12);
    if (type >= XCB_SELECTION_CLEAR && type <= XCB_SELECTION_NOTIFY) return at(8);
    if (type == XCB_KEYMAP_NOTIFY || type == XCB_MAPPING_NOTIFY || type >= XCB_GE_GENERIC) return std::nullopt;
    return at(4);
}

template <class Map, class Key>
Subscription subscribeIn(Map& map, const Key& key, XConnection::EventHandler handler) {
    auto& handlers = map[key];
    if (!handlers) handlers = std::make_shared<Signal<const xcb_generic_event_t&>>();
    return handlers->subscribe(std::move(handler));
}

template <class Map, class Key>
void emitIn(const Map& map, const Key& key, const xcb_generic_event_t& event) {
    const auto found = map.find(key);
    if (found == map.end()) return;
    const auto handlers = found->second;  // a handler may end all the others
    handlers->emit(event);
}

}  // namespace

struct XConnection::EventSource {
    GSource base;
    XConnection* connection;
};

std::unique_ptr<XConnection> XConnection::open(const std::string& display, Log& log, std::function<void()> lost) {
    int screenNumber = 0;
    xcb_connection_t* connection = xcb_connect(display.empty() ? nullptr : display.c_str(), &screenNumber);
    if (xcb_connection_has_error(connection)) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<XConnection>(new XConnection(connection, screenNumber, log, std::move(lost)));
}

XConnection::XConnection(xcb_connection_t* connection, int screenNumber, Log& log, std::function<void()> lost)
    : connection_(connection), log_(log), lost_(std::move(lost)) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    screen_ = screens.data;
    for (int i = 0; screens.rem > 0; ++i, xcb_screen_next(&screens))
        if (i == screenNumber) screen_ = screens.data;
    // Answered with the atoms: their first use would wait for a round trip each.
    for (xcb_extension_t* extension : {&xcb_randr_id, &xcb_big_requests_id})
        xcb_prefetch_extension_data(connection_, extension);
    atoms_ = internAtoms(connection_, screenNumber);

    static GSourceFuncs funcs{prepare, check, dispatch, nullptr, nullptr, nullptr};
    source_ = g_source_new(&funcs, sizeof(EventSource));
    reinterpret_cast<EventSource*>(source_)->connection = this;
    fdTag_ = g_source_add_unix_fd(source_, xcb_get_file_descriptor(connection_),
                                  static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR));
    // Nothing here runs a loop inside a loop. Where that may not be, GLib takes the descriptor away for as long as the
    // source is dispatched, and wakes itself by a write at both ends: five system calls for each batch of events.
    g_source_set_can_recurse(source_, TRUE);
    g_source_attach(source_, nullptr);
}

XConnection::~XConnection() {
    g_source_destroy(source_);
    g_source_unref(source_);
    deliverLastRequests();
    xcb_disconnect(connection_);
}

// The server drops a connection that it finds closed, together with what it has not read of it.
void XConnection::deliverLastRequests() {
    const auto last = xcb_get_input_focus(connection_);
    xcb_flush(connection_);
    const auto end = std::chrono::steady_clock::now() + kDeliveryPatience;
    void* reply = nullptr;
    while (!xcb_poll_for_reply(connection_, last.sequence, &reply, nullptr)) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        pollfd readable{xcb_get_file_descriptor(connection_), POLLIN, 0};
        if (left.count() <= 0 || poll(&readable, 1, static_cast<int>(left.count())) <= 0) break;
    }
    free(reply);
}

// Before the loop waits: what this turn asked for goes out, and what a wait for a reply has read meanwhile is not
// left lying, since the descriptor would not wake us for it.
gboolean XConnection::prepare(GSource* source, gint* timeout) {
    auto& self = *reinterpret_cast<EventSource*>(source)->connection;
    *timeout = -1;
    if (self.isLost_) return FALSE;
    xcb_flush(self.connection_);
    return self.takeArrived(false) || xcb_connection_has_error(self.connection_) ? TRUE : FALSE;
}

gboolean XConnection::check(GSource* source) {
    auto& self = *reinterpret_cast<EventSource*>(source)->connection;
    return !self.isLost_ && g_source_query_unix_fd(source, self.fdTag_) != 0 ? TRUE : FALSE;
}

gboolean XConnection::dispatch(GSource* source, GSourceFunc, gpointer) {
    auto& self = *reinterpret_cast<EventSource*>(source)->connection;
    self.takeArrived(true);
    self.handleArrived();
    if (xcb_connection_has_error(self.connection_)) self.noteLoss();
    return G_SOURCE_CONTINUE;
}

bool XConnection::takeArrived(bool readFromServer) {
    // Polling for an event is what reads the socket, replies included.
    while (events_.size() < kLargestBatch) {
        auto* event = readFromServer ? xcb_poll_for_event(connection_) : xcb_poll_for_queued_event(connection_);
        if (!event) break;
        events_.emplace_back(event);
    }
    takeReplies();
    return !events_.empty() || !replies_.empty();
}

void XConnection::takeReplies() {
    while (!awaited_.empty()) {
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(connection_, awaited_.front().sequence, &reply, &error) == 0) return;
        const XPtr<xcb_generic_error_t> failed(error);
        if (failed) handleError(*failed);
        replies_.emplace_back(std::move(awaited_.front().replied), XPtr<void>(reply));
        awaited_.pop_front();
    }
}

void XConnection::handleArrived() {
    // Replies first: they were asked for before the events that arrived with them could be known, so an event may
    // say that they are stale already, and asking again then is the last word.
    auto replies = std::exchange(replies_, {});
    for (auto& [replied, reply] : replies) replied(reply.get());
    auto events = std::exchange(events_, {});
    for (const auto& event : events) handleEvent(*event);
    batchEnded_.emit();
}

void XConnection::handleEvent(const xcb_generic_event_t& event) {
    const uint8_t type = typeOf(event);
    if (event.response_type == kErrorResponse) return handleError(reinterpret_cast<const xcb_generic_error_t&>(event));
    noteTimestamp(event);
    if (type == XCB_GE_GENERIC) {
        emitIn(genericHandlers_, reinterpret_cast<const xcb_ge_generic_event_t&>(event).extension, event);
        return;
    }
    if (const auto window = windowOf(event)) emitIn(windowHandlers_, *window, event);
    emitIn(typeHandlers_, type, event);
}

void XConnection::noteTimestamp(const xcb_generic_event_t& event) {
    // A time that another client wrote into a synthetic event is worth nothing.
    const uint8_t type = event.response_type;
    if (type >= XCB_KEY_PRESS && type <= XCB_LEAVE_NOTIFY)
        lastTimestamp_ = reinterpret_cast<const xcb_button_press_event_t&>(event).time;
    else if (type == XCB_PROPERTY_NOTIFY)
        lastTimestamp_ = reinterpret_cast<const xcb_property_notify_event_t&>(event).time;
}

void XConnection::handleError(const xcb_generic_error_t& error) {
    if (!log_.isDebugWanted()) return;
    log_.debug("X error " + std::to_string(error.error_code) + " of request " + std::to_string(error.major_code) + "." +
               std::to_string(error.minor_code) + ", resource " + std::to_string(error.resource_id));
}

Subscription XConnection::observeWindow(xcb_window_t window, EventHandler handler) {
    auto inner = std::make_shared<Subscription>(subscribeIn(windowHandlers_, window, std::move(handler)));
    // Windows come and go without end, so the last listener takes its entry along.
    return Subscription([this, window, inner] {
        inner->reset();
        const auto found = windowHandlers_.find(window);
        if (found != windowHandlers_.end() && !found->second->hasListeners()) windowHandlers_.erase(found);
    });
}

Subscription XConnection::observeEventType(uint8_t responseType, EventHandler handler) {
    return subscribeIn(typeHandlers_, responseType, std::move(handler));
}

Subscription XConnection::observeGenericEvents(uint8_t extensionOpcode, EventHandler handler) {
    return subscribeIn(genericHandlers_, extensionOpcode, std::move(handler));
}

void XConnection::addRootEvents(uint32_t eventMask) {
    if ((rootEventMask_ | eventMask) == rootEventMask_) return;
    rootEventMask_ |= eventMask;
    xcb_change_window_attributes(connection_, root(), XCB_CW_EVENT_MASK, &rootEventMask_);
}

Subscription XConnection::registerOwnWindow(xcb_window_t window) {
    ++ownWindows_[window];
    return Subscription([this, window] {
        if (--ownWindows_[window] == 0) ownWindows_.erase(window);
    });
}

void XConnection::awaitReply(unsigned sequence, std::function<void(const void*)> replied) {
    awaited_.push_back({sequence, std::move(replied)});
}

void XConnection::settleReplies() {
    takeReplies();
    while (!replies_.empty() || !awaited_.empty()) {
        if (replies_.empty()) {
            xcb_generic_error_t* error = nullptr;
            XPtr<void> reply(xcb_wait_for_reply(connection_, awaited_.front().sequence, &error));
            const XPtr<xcb_generic_error_t> failed(error);
            if (failed) handleError(*failed);
            replies_.emplace_back(std::move(awaited_.front().replied), std::move(reply));
            awaited_.pop_front();
        }
        auto [replied, reply] = std::move(replies_.front());
        replies_.pop_front();
        replied(reply.get());
    }
}

void XConnection::sendMessage(xcb_window_t receiver, xcb_window_t about, xcb_atom_t type,
                              const std::array<uint32_t, 5>& data, uint32_t eventMask) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = about;
    message.type = type;
    std::ranges::copy(data, message.data.data32);
    xcb_send_event(connection_, 0, receiver, eventMask, reinterpret_cast<const char*>(&message));
}

void XConnection::sendToRoot(xcb_window_t window, xcb_atom_t type, const std::array<uint32_t, 5>& data) {
    sendMessage(root(), window, type, data, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
}

void XConnection::noteLoss() {
    if (std::exchange(isLost_, true)) return;
    g_source_remove_unix_fd(source_, fdTag_);  // a dead descriptor is always readable and would spin the loop
    log_.error("the connection to the X server is lost");
    if (lost_) lost_();
}

}  // namespace morvel::x11
