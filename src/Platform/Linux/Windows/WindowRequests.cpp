#include "Platform/Linux/Windows/WindowRequests.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace morvel::x11 {

namespace {

// Source indication of EWMH: the request is the person's, made through a pager or bar.
constexpr uint32_t kFromPager = 2;
constexpr uint32_t kIconicState = 3;

uint32_t toCoordinate(double value) {
    return static_cast<uint32_t>(static_cast<int32_t>(std::lround(value)));
}

}  // namespace

void WindowRequests::activate(const ClientWindow& client) {
    // One request per window, and none for "any window of the process" beside it.
    std::erase_if(wishes_, [&](const Wish& earlier) {
        return earlier.window == client.window || (earlier.pid == client.pid && !earlier.isCertain);
    });
    addWish({client.pid, client.window, true});
}

void WindowRequests::activateAny(const ClientWindow& mostRecent) {
    const auto isSameProcess = [&](const Wish& earlier) { return earlier.pid == mostRecent.pid; };
    if (std::none_of(wishes_.begin(), wishes_.end(), isSameProcess))
        addWish({mostRecent.pid, mostRecent.window, false});
}

void WindowRequests::addWish(Wish wish) {
    wishes_.push_back(wish);
    sending_ = mainLoop_.after({}, [this] { sendWishes(); });
}

void WindowRequests::sendWishes() {
    for (const Wish& wish : std::exchange(wishes_, {}))
        connection_.sendToRoot(wish.window, connection_.atoms().netActiveWindow,
                               {kFromPager, connection_.lastTimestamp(), XCB_WINDOW_NONE, 0, 0});
}

void WindowRequests::minimize(const ClientWindow& client) {
    std::erase_if(wishes_, [&](const Wish& wish) { return wish.window == client.window; });
    connection_.sendToRoot(client.window, connection_.atoms().wmChangeState, {kIconicState, 0, 0, 0, 0});
}

void WindowRequests::close(const ClientWindow& client) {
    const auto& atoms = connection_.atoms();
    if (root_.supports(atoms.netCloseWindow)) {
        connection_.sendToRoot(client.window, atoms.netCloseWindow, {connection_.lastTimestamp(), kFromPager, 0, 0, 0});
    } else if (client.takesDeleteRequests) {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = client.window;
        message.type = atoms.wmProtocols;
        message.data.data32[0] = atoms.wmDeleteWindow;
        message.data.data32[1] = connection_.lastTimestamp();
        xcb_send_event(connection_.get(), 0, client.window, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&message));
    }
}

void WindowRequests::setFrame(const ClientWindow& client, const Rect<RootSpace>& frame) {
    const auto& atoms = connection_.atoms();
    // By convention the position is the decorations' corner and the size the content's.
    const Point<RootSpace> corner = client.cornerFor(frame);
    const Size size = client.contentSizeFor(frame);
    const std::array<uint32_t, 4> values{toCoordinate(corner.x), toCoordinate(corner.y), toCoordinate(size.width),
                                         toCoordinate(size.height)};
    if (root_.supports(atoms.netMoveresizeWindow)) {
        constexpr uint32_t kAllFour = 0xF << 8;
        constexpr uint32_t flags = XCB_GRAVITY_NORTH_WEST | kAllFour | kFromPager << 12;
        connection_.sendToRoot(client.window, atoms.netMoveresizeWindow,
                               {flags, values[0], values[1], values[2], values[3]});
    } else {
        constexpr uint16_t kMask =
            XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
        xcb_configure_window(connection_.get(), client.window, kMask, values.data());
    }
}

void WindowRequests::setDesktop(const ClientWindow& client, uint32_t desktop) {
    connection_.sendToRoot(client.window, connection_.atoms().netWmDesktop, {desktop, kFromPager, 0, 0, 0});
}

void WindowRequests::kill(const ClientWindow& client) {
    xcb_kill_client(connection_.get(), client.window);
}

}  // namespace morvel::x11
