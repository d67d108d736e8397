// The connection to the X server: one for the whole program, with its events and replies routed to whoever asked.
#pragma once

#include <glib.h>
#include <xcb/xcb.h>

#include <array>
#include <cstdlib>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>

#include "Platform/Linux/System/Atoms.h"
#include "Platform/Log.h"
#include "Util/Signal.h"
#include "Util/Subscription.h"

namespace morvel::x11 {

/// A reply or event as xcb allocates it.
struct FreeWithC {
    void operator()(void* p) const { std::free(p); }
};
template <class T>
using XPtr = std::unique_ptr<T, FreeWithC>;

/// What kind of event it is, whether the server made it or another client sent it.
inline uint8_t typeOf(const xcb_generic_event_t& event) {
    return event.response_type & 0x7F;
}

/// Main thread only. Requests are sent with xcb's own functions and go out at the end of the turn at the latest. In a
/// turn, all events and replies that have arrived (to a bound that only a flood reaches) are handled in one batch; then
/// `observeBatchEnd` listeners run once. Errors of requests without a reply are expected, since other programs' windows
/// vanish at any time: they are logged when debug lines are wanted. Every token handed out ends before the
/// connection.
class XConnection {
public:
    /// Connects to the display named so, or to DISPLAY's when empty. Null when there is none to be had. `log` outlives
    /// the connection. `lost` is called once, in a turn of the loop, when the server went away; nothing can be asked of
    /// the connection any more then, but calling it does no harm.
    static std::unique_ptr<XConnection> open(const std::string& display, Log& log, std::function<void()> lost);
    ~XConnection();
    XConnection(const XConnection&) = delete;
    XConnection& operator=(const XConnection&) = delete;

    xcb_connection_t* get() const { return connection_; }
    const xcb_screen_t& screen() const { return *screen_; }
    xcb_window_t root() const { return screen_->root; }
    const Atoms& atoms() const { return atoms_; }
    Log& log() { return log_; }

    /// The server time of the newest event that told one; XCB_CURRENT_TIME before the first. Requests on behalf of the
    /// person carry it, so that window managers do not take them for stale or unasked-for.
    xcb_timestamp_t lastTimestamp() const { return lastTimestamp_; }

    /// Handed each core event about the window it was selected on or sent to (for selection events: the owner or
    /// requestor), also synthetic ones: then bit 0x80 of the response type is set. Several may observe one window.
    using EventHandler = std::function<void(const xcb_generic_event_t&)>;
    [[nodiscard]] Subscription observeWindow(xcb_window_t window, EventHandler handler);
    [[nodiscard]] Subscription observeRoot(EventHandler handler) { return observeWindow(root(), std::move(handler)); }
    /// Every event of this response type, whatever its window: for extensions (their first event plus a number), and
    /// MappingNotify.
    [[nodiscard]] Subscription observeEventType(uint8_t responseType, EventHandler handler);
    /// Every generic event (type 35) of the extension with this major opcode.
    [[nodiscard]] Subscription observeGenericEvents(uint8_t extensionOpcode, EventHandler handler);
    /// After all that had arrived was handled.
    [[nodiscard]] Subscription observeBatchEnd(std::function<void()> ended) {
        return batchEnded_.subscribe(std::move(ended));
    }

    /// Adds to the events that this program gets from the root window; others of this program keep theirs.
    void addRootEvents(uint32_t eventMask);

    /// Remembers that a window is this program's own, so that it is never taken for another program's.
    [[nodiscard]] Subscription registerOwnWindow(xcb_window_t window);
    bool isOwnWindow(xcb_window_t window) const { return ownWindows_.contains(window); }

    /// Calls `replied` in a later turn with the reply, or with null when the request failed or the connection is lost.
    /// Replies are handed over in the order of the requests. `sequence` is the cookie's.
    template <class Reply>
    void whenReplied(unsigned sequence, std::function<void(const Reply*)> replied) {
        awaitReply(sequence, [replied = std::move(replied)](const void* r) { replied(static_cast<const Reply*>(r)); });
    }
    /// Waits for all outstanding replies, and for those that handling them asks for, and handles them: for start-up,
    /// where an answer is needed before the first turn. Never on the way of an event.
    void settleReplies();

    /// Sends a client message about `about` to the client of `receiver`, or to those that have selected one of the
    /// events on it. A receiver that is gone is no fault.
    void sendMessage(xcb_window_t receiver, xcb_window_t about, xcb_atom_t type, const std::array<uint32_t, 5>& data,
                     uint32_t eventMask = XCB_EVENT_MASK_NO_EVENT);
    /// Sends a client message about `window` to the root window, as window managers are asked for things.
    void sendToRoot(xcb_window_t window, xcb_atom_t type, const std::array<uint32_t, 5>& data);

private:
    struct EventSource;
    struct Awaited {
        unsigned sequence;
        std::function<void(const void*)> replied;
    };
    using Handlers = std::shared_ptr<Signal<const xcb_generic_event_t&>>;

    XConnection(xcb_connection_t* connection, int screenNumber, Log& log, std::function<void()> lost);

    static gboolean prepare(GSource* source, gint* timeout);
    static gboolean check(GSource* source);
    static gboolean dispatch(GSource* source, GSourceFunc, gpointer);

    bool takeArrived(bool readFromServer);
    void handleArrived();
    void takeReplies();
    void deliverLastRequests();
    void handleEvent(const xcb_generic_event_t& event);
    void noteTimestamp(const xcb_generic_event_t& event);
    void handleError(const xcb_generic_error_t& error);
    void awaitReply(unsigned sequence, std::function<void(const void*)> replied);
    void noteLoss();

    xcb_connection_t* const connection_;
    Log& log_;
    std::function<void()> lost_;
    const xcb_screen_t* screen_ = nullptr;
    Atoms atoms_;
    GSource* source_ = nullptr;
    gpointer fdTag_ = nullptr;

    std::deque<XPtr<xcb_generic_event_t>> events_;                                 // arrived, not handled
    std::deque<Awaited> awaited_;                                                  // in the order of their requests
    std::deque<std::pair<std::function<void(const void*)>, XPtr<void>>> replies_;  // arrived, not handled
    std::unordered_map<xcb_window_t, Handlers> windowHandlers_;
    std::map<uint8_t, Handlers> typeHandlers_;
    std::map<uint8_t, Handlers> genericHandlers_;
    std::unordered_map<xcb_window_t, int> ownWindows_;
    Signal<> batchEnded_;
    uint32_t rootEventMask_ = 0;
    xcb_timestamp_t lastTimestamp_ = XCB_CURRENT_TIME;
    bool isLost_ = false;
};

}  // namespace morvel::x11
