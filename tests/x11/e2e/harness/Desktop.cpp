#include "harness/Desktop.h"

#include <poll.h>
#include <xcb/randr.h>
#include <xcb/xcbext.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace morvel::e2e {
namespace {

/// What is worth waiting for makes events of many kinds, or none (a process that dies, a file), so the state is simply
/// looked at again this often at the latest.
constexpr int kLookAgainMilliseconds = 20;

/// Sends RRSetMonitor by hand: the function that XCB 1.15 has for it fails an assertion of its own.
void defineMonitor(Connection& connection, const Monitor& monitor, xcb_randr_output_t output) {
    struct {
        uint8_t major = 0;
        uint8_t minor = XCB_RANDR_SET_MONITOR;
        uint16_t length = 0;  // both are filled in by the library
        xcb_window_t window;
        xcb_randr_monitor_info_t info{};
        xcb_randr_output_t output;
    } request{.window = connection.root(), .output = output};
    const Box& box = monitor.box;
    request.info.name = connection.atom(monitor.name);
    request.info.primary = monitor.primary;
    request.info.nOutput = output == XCB_NONE ? 0 : 1;
    request.info.x = static_cast<int16_t>(box.x);
    request.info.y = static_cast<int16_t>(box.y);
    request.info.width = static_cast<uint16_t>(box.width);
    request.info.height = static_cast<uint16_t>(box.height);
    request.info.width_in_millimeters = static_cast<uint32_t>(box.width / 4);
    request.info.height_in_millimeters = static_cast<uint32_t>(box.height / 4);

    const xcb_protocol_request_t protocol{
        .count = 1, .ext = &xcb_randr_id, .opcode = XCB_RANDR_SET_MONITOR, .isvoid = 1};
    iovec parts[3] = {};  // XCB uses the two before the first for itself
    parts[2].iov_base = &request;
    parts[2].iov_len = output == XCB_NONE ? sizeof request - sizeof output : sizeof request;
    xcb_send_request(connection, 0, parts + 2, &protocol);
}

uint32_t bits(int value) {
    return static_cast<uint32_t>(value);
}

}  // namespace

bool Desktop::waitUntil(const std::function<bool()>& reached, std::chrono::milliseconds patience) {
    for (const auto deadline = WaitClock::now() + patience;;) {
        std::vector<pollfd> descriptors;
        for (auto* source : std::vector(sources_)) {
            source->serve();
            descriptors.push_back({source->descriptor(), POLLIN, 0});
        }
        if (!connection_.isAlive()) throw std::runtime_error("the X server is gone");
        if (reached()) return true;
        if (WaitClock::now() >= deadline) return false;
        poll(descriptors.data(), descriptors.size(), kLookAgainMilliseconds);
    }
}

std::optional<xcb_window_t> Desktop::activeWindow() {
    const auto active = connection_.cardinals(connection_.root(), "_NET_ACTIVE_WINDOW");
    if (active.empty() || active[0] == XCB_NONE) return std::nullopt;
    return active[0];
}

xcb_window_t Desktop::inputFocus() {
    const Owned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    return reply ? reply->focus : XCB_NONE;
}

std::string Desktop::title(xcb_window_t window) {
    if (const auto modern = connection_.bytes(window, "_NET_WM_NAME")) return *modern;
    return connection_.bytes(window, "WM_NAME").value_or("");
}

std::optional<xcb_window_t> Desktop::windowTitled(const std::string& wanted) {
    for (const auto window : clients())
        if (title(window) == wanted) return window;
    return std::nullopt;
}

std::vector<xcb_window_t> Desktop::windowsOf(pid_t pid) {
    auto windows = clients();
    std::erase_if(windows, [&](xcb_window_t window) {
        const auto claimed = connection_.cardinals(window, "_NET_WM_PID");
        return claimed.empty() || static_cast<pid_t>(claimed[0]) != pid;
    });
    return windows;
}

std::set<std::string> Desktop::states(xcb_window_t window) {
    std::set<std::string> names;
    for (const auto atom : connection_.cardinals(window, "_NET_WM_STATE")) names.insert(connection_.atomName(atom));
    return names;
}

bool Desktop::isAbove(xcb_window_t front, xcb_window_t back) {
    const auto stack = connection_.cardinals(connection_.root(), "_NET_CLIENT_LIST_STACKING");
    const auto frontAt = std::find(stack.begin(), stack.end(), front);
    const auto backAt = std::find(stack.begin(), stack.end(), back);
    return frontAt != stack.end() && backAt != stack.end() && frontAt > backAt;
}

uint32_t Desktop::workspaceOf(xcb_window_t window) {
    const auto value = connection_.cardinals(window, "_NET_WM_DESKTOP");
    return value.empty() ? 0 : value[0];
}

void Desktop::minimize(xcb_window_t window) {
    constexpr uint32_t kIconicState = 3;
    connection_.askManager(window, "WM_CHANGE_STATE", {kIconicState});
}

void Desktop::setMaximized(xcb_window_t window, bool maximized) {
    connection_.askManager(window, "_NET_WM_STATE",
                           {maximized ? 1U : 0U, connection_.atom("_NET_WM_STATE_MAXIMIZED_VERT"),
                            connection_.atom("_NET_WM_STATE_MAXIMIZED_HORZ"), kFromPager});
}

void Desktop::place(xcb_window_t window, const Box& box) {
    constexpr uint32_t kAllFour = 0xF00;
    constexpr uint32_t kGravity = XCB_GRAVITY_STATIC;
    connection_.askManager(
        window, "_NET_MOVERESIZE_WINDOW",
        {kGravity | kAllFour | kFromPager << 12, bits(box.x), bits(box.y), bits(box.width), bits(box.height)});
}

uint32_t Desktop::currentWorkspace() {
    const auto value = connection_.cardinals(connection_.root(), "_NET_CURRENT_DESKTOP");
    return value.empty() ? 0 : value[0];
}

void Desktop::setMonitors(const std::vector<Monitor>& monitors) {
    // The first one takes over the only real output, as otherwise that output would remain a monitor beside them.
    const Owned<xcb_randr_get_screen_resources_current_reply_t> resources(xcb_randr_get_screen_resources_current_reply(
        connection_, xcb_randr_get_screen_resources_current(connection_, connection_.root()), nullptr));
    if (!resources || resources->num_outputs == 0) throw std::runtime_error("the X server has no output");
    const xcb_randr_output_t output = xcb_randr_get_screen_resources_current_outputs(resources.get())[0];

    // One grabbed step, so that nobody sees the desktop between two arrangements.
    xcb_grab_server(connection_);
    // All of them: the server refuses to define one that is there already.
    for (const auto& name : std::exchange(definedMonitors_, {}))
        xcb_randr_delete_monitor(connection_, connection_.root(), connection_.atom(name));
    for (const auto& monitor : monitors) {
        defineMonitor(connection_, monitor, definedMonitors_.empty() ? output : XCB_NONE);
        definedMonitors_.push_back(monitor.name);
    }
    xcb_ungrab_server(connection_);
    connection_.sync();
}

}  // namespace morvel::e2e
