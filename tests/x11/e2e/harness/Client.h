// A program of the test's own, which does exactly what it is told: also what no decent program does.
#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <set>
#include <utility>

#include "harness/Desktop.h"
#include "harness/XServer.h"

namespace morvel::e2e {

struct ClientWindow {
    std::string title = "Window";
    Box box = {120, 90, 320, 200};
    std::string className = "TestClient";  // the second word of WM_CLASS
    /// What it claims as its process; no value: nothing at all.
    std::optional<uint32_t> pid = static_cast<uint32_t>(getpid());
    std::string type = "_NET_WM_WINDOW_TYPE_NORMAL";
    std::vector<std::string> states = {};  // before it is mapped
    uint32_t color = 0x6688AA;             // fills the window, 0xRRGGBB
    std::optional<uint32_t> iconColor = {};
    bool fixedPlace = true;  // asks the window manager to honour `box`'s origin
};

class Client : public EventSource {
public:
    Client(XServer& server, Desktop& desktop);
    ~Client() override;

    /// Makes and maps a window; does not wait for the window manager.
    xcb_window_t open(const ClientWindow& window = {});
    /// The same, and waits until the window is managed and shown.
    xcb_window_t openAndWait(const ClientWindow& window = {});
    void setTitle(xcb_window_t window, std::string_view bytes);
    void setPid(xcb_window_t window, uint32_t pid) {
        connection_.setCardinals(window, "_NET_WM_PID", "CARDINAL", {pid});
    }
    void unmap(xcb_window_t window) {
        xcb_unmap_window(connection_, window);
        connection_.flush();
    }
    void destroy(xcb_window_t window) {
        xcb_destroy_window(connection_, window);
        connection_.flush();
    }
    /// Has this text on the clipboard from now on.
    void copy(xcb_window_t owner, std::string text);
    /// Whether one of its windows was pressed with a button since it was last asked.
    bool wasClicked() { return std::exchange(clicked_, false); }

    Connection& connection() { return connection_; }
    int descriptor() const override { return connection_.descriptor(); }
    void serve() override;

private:
    void describe(xcb_window_t id, const ClientWindow& window);

    Desktop& desktop_;  // outlives us
    Connection connection_;
    std::string copied_;
    bool clicked_ = false;
};

}  // namespace morvel::e2e
