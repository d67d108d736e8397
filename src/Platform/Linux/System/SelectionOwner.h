// Who owns a selection of the display: such an owner speaks for a service, as compositing managers do.
#pragma once

#include "Platform/Linux/System/XConnection.h"

namespace morvel::x11 {

/// Main thread only. Asks the server once when made and is told of changes afterwards, by a server with the fixes
/// extension: owners do not all announce themselves.
class SelectionOwner {
public:
    /// The connection outlives it.
    SelectionOwner(XConnection& connection, xcb_atom_t selection);

    /// XCB_WINDOW_NONE while there is none.
    xcb_window_t window() const { return window_; }

    [[nodiscard]] Subscription observeChanges(std::function<void()> changed) {
        return changed_.subscribe(std::move(changed));
    }

private:
    void watch(XConnection& connection, xcb_atom_t selection);

    xcb_window_t window_ = XCB_WINDOW_NONE;
    Signal<> changed_;
    Subscription notices_;
};

}  // namespace morvel::x11
