#include "Platform/Linux/UI/Drag/XdndFinder.h"

#include <algorithm>
#include <utility>

#include "Platform/Linux/System/Property.h"
#include "Platform/Linux/UI/Drag/XdndMessages.h"

namespace morvel::x11 {

namespace {

// Deeper than any program nests its windows.
constexpr int kMaxDepth = 32;

xcb_get_property_cookie_t firstOf(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
                                  xcb_atom_t type) {
    return xcb_get_property(connection, 0, window, property, type, 0, 1);
}

std::optional<XdndWindow> takingDrops(xcb_window_t window, xcb_window_t receiver, uint32_t version) {
    if (version < kOldestXdndVersion) return std::nullopt;
    return XdndWindow{window, receiver, std::min(version, kXdndVersion)};
}

}  // namespace

template <class Reply>
void XdndFinder::whenReplied(unsigned sequence, std::function<void(Search&, const Reply*)> handle) {
    connection_.whenReplied<Reply>(sequence,
                                   [weak = std::weak_ptr(search_), handle = std::move(handle)](const Reply* reply) {
                                       if (const auto search = weak.lock()) handle(*search, reply);
                                   });
}

void XdndFinder::find(Point<RootSpace> location, Found found) {
    search_ = std::make_shared<Search>(Search{this, location, std::move(found)});
    ask(connection_.root());
}

void XdndFinder::ask(xcb_window_t window) {
    if (search_->depth++ > kMaxDepth) return finish(std::nullopt);
    xcb_connection_t* c = connection_.get();
    const Atoms& atoms = connection_.atoms();
    whenReplied<xcb_get_property_reply_t>(
        firstOf(c, window, atoms.xdndAware, XCB_ATOM_ATOM).sequence,
        [](Search& s, const auto* reply) { s.version = firstCardinal(reply).value_or(0); });
    whenReplied<xcb_get_property_reply_t>(
        firstOf(c, window, atoms.xdndProxy, XCB_ATOM_WINDOW).sequence,
        [](Search& s, const auto* reply) { s.proxy = firstCardinal(reply).value_or(0); });
    const auto below =
        xcb_translate_coordinates(c, connection_.root(), window, static_cast<int16_t>(search_->location.x),
                                  static_cast<int16_t>(search_->location.y));
    whenReplied<xcb_translate_coordinates_reply_t>(
        below.sequence, [window](Search& s, const auto* reply) { s.finder->answered(window, reply); });
}

void XdndFinder::answered(xcb_window_t window, const xcb_translate_coordinates_reply_t* below) {
    const bool isRoot = window == connection_.root();
    if (isRoot) search_->rootProxy = search_->proxy;
    if (!isRoot) {
        if (search_->proxy) return askProxy(window, search_->proxy);
        if (const auto found = takingDrops(window, window, search_->version)) return finish(found);
    }
    const xcb_window_t child = below ? below->child : XCB_NONE;
    if (child && connection_.isOwnWindow(child)) return finish(std::nullopt);
    if (child) return ask(child);
    // Nobody on the way down: the desktop itself may have somebody who takes what is dropped on it.
    if (search_->rootProxy) return askProxy(connection_.root(), search_->rootProxy);
    finish(std::nullopt);
}

// A proxy that is gone, or a window that got its number since, does not name itself as its own proxy.
void XdndFinder::askProxy(xcb_window_t window, xcb_window_t proxy) {
    xcb_connection_t* c = connection_.get();
    const Atoms& atoms = connection_.atoms();
    whenReplied<xcb_get_property_reply_t>(
        firstOf(c, proxy, atoms.xdndAware, XCB_ATOM_ATOM).sequence,
        [](Search& s, const auto* reply) { s.version = firstCardinal(reply).value_or(0); });
    whenReplied<xcb_get_property_reply_t>(
        firstOf(c, proxy, atoms.xdndProxy, XCB_ATOM_WINDOW).sequence, [window, proxy](Search& s, const auto* reply) {
            const bool isValid = firstCardinal(reply) == proxy;
            s.finder->finish(isValid ? takingDrops(window, proxy, s.version) : std::nullopt);
        });
}

void XdndFinder::finish(std::optional<XdndWindow> window) {
    const auto search = std::exchange(search_, nullptr);
    search->found(window);
}

}  // namespace morvel::x11
