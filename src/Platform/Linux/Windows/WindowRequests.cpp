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
        connection_.sendMessage(client.window, client.window, atoms.wmProtocols,
                                {atoms.wmDeleteWindow, connection_.lastTimestamp()});
    }
}

void WindowRequests::setPosition(const ClientWindow& client, Point<RootSpace> origin) {
    const Point<RootSpace> corner = client.cornerFor({origin.x, origin.y, 0, 0});
    configure(client, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, toCoordinate(corner.x), toCoordinate(corner.y));
}

void WindowRequests::setSize(const ClientWindow& client, Size size) {
    const Size content = client.contentSizeFor({0, 0, size.width, size.height});
    configure(client, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, toCoordinate(content.width),
              toCoordinate(content.height));
}

/// Only what is to change is told: where the window is now may be older than a request on its way.
void WindowRequests::configure(const ClientWindow& client, uint16_t fields, uint32_t first, uint32_t second) {
    const auto& atoms = connection_.atoms();
    if (root_.supports(atoms.netMoveresizeWindow)) {
        const bool isSize = (fields & XCB_CONFIG_WINDOW_WIDTH) != 0;
        // The convention numbers the fields as a configure request does.
        const uint32_t flags = XCB_GRAVITY_NORTH_WEST | uint32_t{fields} << 8 | kFromPager << 12;
        connection_.sendToRoot(
            client.window, atoms.netMoveresizeWindow,
            {flags, isSize ? 0 : first, isSize ? 0 : second, isSize ? first : 0, isSize ? second : 0});
    } else {
        const std::array<uint32_t, 2> values{first, second};
        xcb_configure_window(connection_.get(), client.window, fields, values.data());
    }
}

void WindowRequests::setDesktop(const ClientWindow& client, uint32_t desktop) {
    connection_.sendToRoot(client.window, connection_.atoms().netWmDesktop, {desktop, kFromPager, 0, 0, 0});
}

void WindowRequests::kill(const ClientWindow& client) {
    xcb_kill_client(connection_.get(), client.window);
}

}  // namespace morvel::x11
