// Finds the window of another program that would take a drop at a place on the screen.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "Platform/Linux/Screens/RootGeometry.h"
#include "Platform/Linux/System/XConnection.h"

namespace morvel::x11 {

struct XdndWindow {
    xcb_window_t window = 0;    ///< which the drag is over
    xcb_window_t receiver = 0;  ///< which gets the messages: the same, or its proxy
    uint32_t version = 0;       ///< of the protocol, as both speak it

    bool operator==(const XdndWindow&) const = default;
};

/// Main thread only. Goes down from the root window, asking the server once per level and never waiting for it.
class XdndFinder {
public:
    using Found = std::function<void(std::optional<XdndWindow>)>;

    /// The connection outlives it.
    explicit XdndFinder(XConnection& connection) : connection_(connection) {}

    /// Calls `found` once in a later turn: with nothing when there is no such window, or it is one of ours. A search
    /// that goes on is given up.
    void find(Point<RootSpace> location, Found found);
    void cancel() { search_.reset(); }
    bool isBusy() const { return search_ != nullptr; }

private:
    struct Search {
        XdndFinder* finder;
        Point<RootSpace> location;
        Found found;
        int depth = 0;
        xcb_window_t rootProxy = 0;
        // Of the window that is asked about:
        uint32_t version = 0;
        xcb_window_t proxy = 0;
    };

    void ask(xcb_window_t window);
    void answered(xcb_window_t window, const xcb_translate_coordinates_reply_t* below);
    void askProxy(xcb_window_t window, xcb_window_t proxy);
    void finish(std::optional<XdndWindow> window);
    /// Hands the reply to `handle` if the search still goes on.
    template <class Reply>
    void whenReplied(unsigned sequence, std::function<void(Search&, const Reply*)> handle);

    XConnection& connection_;
    std::shared_ptr<Search> search_;  // null while there is none
};

}  // namespace morvel::x11
