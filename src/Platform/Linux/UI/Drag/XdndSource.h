// Offers something of ours to the windows of other programs while it is dragged over them.
#pragma once

#include <functional>
#include <optional>

#include "Platform/Linux/UI/Drag/XdndFinder.h"
#include "Platform/Linux/UI/Drag/XdndMessages.h"
#include "Platform/MainLoop.h"
#include "UI/Drag.h"
#include "Util/Lifetime.h"

namespace morvel::x11 {

/// Main thread only. Waits for nobody: a program that does not answer gets no further positions, and no drop.
class XdndSource {
public:
    /// `window` speaks for us and owns what is dragged; it, the connection and the loop outlive the object.
    XdndSource(XConnection& connection, MainLoop& mainLoop, xcb_window_t window, ui::DragItem item);
    /// A window that still thinks that the drag is over it is told that it is not.
    ~XdndSource();
    XdndSource(const XdndSource&) = delete;
    XdndSource& operator=(const XdndSource&) = delete;

    /// The pointer is over no window of ours.
    void movedTo(Point<RootSpace> location);
    /// The pointer is over a window of ours, or the drag is given up.
    void leave();
    /// Dropped where it was moved to last. `done` is called once, with what the other program did: inside this call
    /// or later, in bounded time. Not after the object's end.
    void drop(std::function<void(ui::DragOperation)> done);

private:
    void handle(const xcb_generic_event_t& event);
    void search();
    void found(const std::optional<XdndWindow>& window);
    void sendPosition();
    void statusCame(const XdndStatus& status);
    void dropIfSettled();
    void finish(ui::DragOperation operation);
    void answerRequest(const xcb_selection_request_event_t& request);
    void send(xcb_atom_t type, const MessageData& data);
    ui::DragOperation operationOf(xcb_atom_t action) const;

    XConnection& connection_;
    MainLoop& mainLoop_;
    const xcb_window_t window_;
    const ui::DragItem item_;
    XdndFinder finder_;
    xcb_atom_t type_ = XCB_ATOM_NONE;  // the item's; none until the server has answered
    Point<RootSpace> location_;
    bool searchesAgain_ = false;

    std::optional<XdndWindow> target_;
    bool awaitsStatus_ = false;
    bool hasMoved_ = false;                        // since the position that is waited for
    xcb_atom_t accepted_ = 0;                      // the action of the last status; 0: not accepted
    std::function<void(ui::DragOperation)> done_;  // set once dropped
    bool awaitsFinish_ = false;
    Timer deadline_;
    Subscription events_;
    Lifetime lifetime_;
};

}  // namespace morvel::x11
