// A connection to the X server with the few requests that tests and the tour are written in.
#pragma once

#include <xcb/xcb.h>

#include <array>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "harness/Box.h"

namespace morvel::e2e {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};
/// Replies and events, which XCB allocates with malloc.
template <class T>
using Owned = std::unique_ptr<T, FreeDeleter>;
using Event = Owned<xcb_generic_event_t>;

/// The event's type, whoever sent it.
inline int typeOf(const Event& event) {
    return event->response_type & 0x7f;
}
/// The event as what its type says that it is.
template <class T>
const T& as(const Event& event) {
    return reinterpret_cast<const T&>(*event);
}

class Connection {
public:
    /// Throws std::runtime_error when the server cannot be reached.
    explicit Connection(const std::string& display);

    xcb_connection_t* get() const { return connection_.get(); }
    operator xcb_connection_t*() const { return get(); }
    const xcb_screen_t& screen() const { return *screen_; }
    xcb_window_t root() const { return screen_->root; }
    int descriptor() const { return xcb_get_file_descriptor(get()); }
    bool isAlive() const { return xcb_connection_has_error(get()) == 0; }

    xcb_atom_t atom(std::string_view name);
    std::string atomName(xcb_atom_t atom);

    /// The property's bytes, whatever their type. No value: the window or the property does not exist.
    std::optional<std::string> bytes(xcb_window_t window, std::string_view property);
    /// The property's 32-bit items; empty when there is none.
    std::vector<uint32_t> cardinals(xcb_window_t window, std::string_view property);
    void setBytes(xcb_window_t window, std::string_view property, std::string_view type, std::string_view value);
    void setCardinals(xcb_window_t window, std::string_view property, std::string_view type,
                      const std::vector<uint32_t>& values);
    void setBytes(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, std::string_view value);
    /// A window of the root that is not mapped yet, filled with the colour (0xRRGGBB), which hears of these events.
    xcb_window_t makeWindow(const Box& box, uint32_t color, uint32_t events = 0, bool isManaged = true);
    /// From now on this connection hears of these events of the window, and of no others.
    void listen(xcb_window_t window, uint32_t events);
    /// From now on the window owns the selection; with XCB_NONE nobody does.
    void own(xcb_window_t window, std::string_view selection);
    /// Tells who asked for a selection that it is there now, in this property; with XCB_NONE that it is not to be had.
    void answer(const xcb_selection_request_event_t& request, xcb_atom_t property);
    /// A client message to `target`.
    void send(xcb_window_t target, std::string_view message, const std::array<uint32_t, 5>& data);
    /// A client message about `window` to the window manager.
    void askManager(xcb_window_t window, std::string_view message, const std::array<uint32_t, 5>& data);

    std::vector<xcb_window_t> childrenOf(xcb_window_t window);
    /// The window's place on the root, without its frame. No value: it does not exist.
    std::optional<Box> boxOf(xcb_window_t window);
    bool isViewable(xcb_window_t window);

    /// Returns when the server has done everything asked so far.
    void sync();
    void flush() { xcb_flush(get()); }
    /// The next event that has already arrived, or null.
    Event next() { return Event(xcb_poll_for_event(get())); }

private:
    void send(xcb_window_t target, uint32_t mask, xcb_window_t about, std::string_view message,
              const std::array<uint32_t, 5>& data);

    struct Disconnect {
        void operator()(xcb_connection_t* c) const { xcb_disconnect(c); }
    };
    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    xcb_screen_t* screen_ = nullptr;  // the connection's
    std::map<std::string, xcb_atom_t, std::less<>> atoms_;
};

}  // namespace morvel::e2e
