// The desktop as an outsider sees and steers it: windows, workspaces and monitors, by the window manager's properties
// and messages; and the one place where the harness waits.
#pragma once

#include <functional>
#include <set>

#include "harness/Connection.h"
#include "harness/Waiting.h"

namespace morvel::e2e {

struct Monitor {
    std::string name;
    Box box;
    bool primary = false;
};

/// Something with a descriptor that is served while the harness waits.
class EventSource {
public:
    virtual ~EventSource() = default;
    virtual int descriptor() const = 0;
    /// Handles everything that has arrived, without blocking.
    virtual void serve() = 0;
};

/// Requests of pagers and bars are obeyed where those of programs may not be.
inline constexpr uint32_t kFromPager = 2;

class Desktop {
public:
    explicit Desktop(const std::string& display) : connection_(display) {}

    Connection& connection() { return connection_; }
    Box box() const { return {0, 0, connection_.screen().width_in_pixels, connection_.screen().height_in_pixels}; }

    /// Serves everybody's events until `reached` holds, which is looked at again and again.
    /// False: it did not hold within `patience`.
    bool waitUntil(const std::function<bool()>& reached, std::chrono::milliseconds patience = kPatience);
    /// Serves everybody for the whole time: for observing that something does *not* happen.
    void runFor(std::chrono::milliseconds time) {
        waitUntil([] { return false; }, time);
    }
    /// Serves `source` while waiting. The caller calls `forget` before the source dies.
    void attend(EventSource& source) { sources_.push_back(&source); }
    void forget(EventSource& source) { std::erase(sources_, &source); }

    // --- Windows ---
    std::vector<xcb_window_t> clients() { return connection_.cardinals(connection_.root(), "_NET_CLIENT_LIST"); }
    /// No value: no window has the focus.
    std::optional<xcb_window_t> activeWindow();
    /// The window that really gets the keys, which the bar must never be.
    xcb_window_t inputFocus();
    std::string title(xcb_window_t window);
    /// The managed window with exactly this title.
    std::optional<xcb_window_t> windowTitled(const std::string& title);
    /// The managed windows of this process, by what they claim.
    std::vector<xcb_window_t> windowsOf(pid_t pid);
    /// The names of its states, such as "_NET_WM_STATE_HIDDEN".
    std::set<std::string> states(xcb_window_t window);
    bool isMinimized(xcb_window_t window) { return states(window).contains("_NET_WM_STATE_HIDDEN"); }
    /// Whether `front` is drawn above `back`.
    bool isAbove(xcb_window_t front, xcb_window_t back);
    Box windowBox(xcb_window_t window) { return connection_.boxOf(window).value_or(Box{}); }
    uint32_t workspaceOf(xcb_window_t window);

    void activate(xcb_window_t window) {
        connection_.askManager(window, "_NET_ACTIVE_WINDOW", {kFromPager, XCB_CURRENT_TIME});
    }
    void minimize(xcb_window_t window);
    void setMaximized(xcb_window_t window, bool maximized);
    void close(xcb_window_t window) {
        connection_.askManager(window, "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, kFromPager});
    }
    /// Moves and resizes; the box is the window's own, without its frame.
    void place(xcb_window_t window, const Box& box);

    // --- Workspaces, counted from 0 ---
    uint32_t currentWorkspace();
    void showWorkspace(uint32_t index) {
        connection_.askManager(connection_.root(), "_NET_CURRENT_DESKTOP", {index, XCB_CURRENT_TIME});
    }
    void sendToWorkspace(xcb_window_t window, uint32_t index) {
        connection_.askManager(window, "_NET_WM_DESKTOP", {index, kFromPager});
    }

    // --- Monitors ---
    /// Defines these monitors in place of those that were defined before.
    void setMonitors(const std::vector<Monitor>& monitors);

private:
    Connection connection_;
    std::vector<std::string> definedMonitors_;
    std::vector<EventSource*> sources_;
};

}  // namespace morvel::e2e
