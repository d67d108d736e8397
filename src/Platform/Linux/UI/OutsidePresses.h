// Presses of mouse buttons anywhere on the screen, without taking them from anybody.
#pragma once

#include <xcb/xcbext.h>

#include "Platform/Linux/UI/ToolkitContext.h"
#include "Util/Signal.h"

namespace morvel::x11 {

/// Main thread only. The server is asked for its raw button events only while somebody listens. Nothing is ever
/// reported by a server without version 2 of the input extension.
class OutsidePresses {
public:
    /// The context outlives it.
    explicit OutsidePresses(ToolkitContext& context);

    /// Presses over this program's own windows, and those that an open menu takes, are left out, and so is the wheel.
    [[nodiscard]] Subscription observe(std::function<void()> pressed);

private:
    void start();
    void select(uint32_t eventMask);
    unsigned send(uint8_t request, void* data, size_t size, bool hasReply);
    void handle(const xcb_generic_event_t& event);

    ToolkitContext& context_;
    xcb_extension_t extension_{"XInputExtension", 0};
    bool isAvailable_ = false;
    bool wasAsked_ = false;
    int listeners_ = 0;
    Signal<> pressed_;
    Subscription events_;
};

}  // namespace morvel::x11
