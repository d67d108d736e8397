// What window managers can be asked to do with another program's window.
#pragma once

#include <vector>

#include "Platform/Linux/System/XConnection.h"
#include "Platform/Linux/Windows/ClientWindow.h"
#include "Platform/Linux/Windows/RootState.h"
#include "Platform/MainLoop.h"

namespace morvel::x11 {

/// Main thread only. Every request is sent in the person's name, with the time of the newest event. Whether it is
/// granted shows in the window's later events alone.
class WindowRequests {
public:
    /// All outlive this.
    WindowRequests(XConnection& connection, MainLoop& mainLoop, RootState& root)
        : connection_(connection), mainLoop_(mainLoop), root_(root) {}

    /// Brings the window to the front, restored, with the focus, at the end of this turn, so that "activate the
    /// application", "restore this window" and "raise it" are a single request.
    void activate(const ClientWindow& client);
    /// The same for a process of which no certain window is meant; gives way to an `activate` in the same turn.
    void activateAny(const ClientWindow& mostRecent);
    void minimize(const ClientWindow& client);
    /// Closes as its close button does; the program may ask its user first.
    void close(const ClientWindow& client);
    /// Of the frame that the person is to see, as `ClientWindow::frame` tells it.
    void setPosition(const ClientWindow& client, Point<RootSpace> origin);
    void setSize(const ClientWindow& client, Size size);
    void setDesktop(const ClientWindow& client, uint32_t desktop);
    /// Cuts the window's program off from the server.
    void kill(const ClientWindow& client);

private:
    struct Wish {
        ProcessID pid;
        xcb_window_t window;
        bool isCertain;
    };

    void configure(const ClientWindow& client, uint16_t fields, uint32_t first, uint32_t second);
    void addWish(Wish wish);
    void sendWishes();

    XConnection& connection_;
    MainLoop& mainLoop_;
    RootState& root_;
    std::vector<Wish> wishes_;  // of this turn, in their order
    Timer sending_;
};

}  // namespace morvel::x11
