// Has the keyboard for one of this program's windows, for as long as it lives.
#pragma once

#include "Platform/Linux/UI/ToolkitContext.h"
#include "Util/Lifetime.h"

namespace morvel::x11 {

/// A grab rather than the focus: the window that has the focus keeps it, so the application in front stays in front for
/// the window manager and for the bar, and has the keyboard back at once when this ends, or this program. Main thread
/// only.
class KeyboardGrab {
public:
    /// The context outlives it.
    explicit KeyboardGrab(ToolkitContext& context) : context_(context) {}
    ~KeyboardGrab();
    KeyboardGrab(const KeyboardGrab&) = delete;
    KeyboardGrab& operator=(const KeyboardGrab&) = delete;

    /// Takes the keyboard for a window that is mapped; once more where somebody took it away. Another program that
    /// holds it now is waited for, for a second.
    void take(xcb_window_t window);

private:
    void ask(int triesLeft);

    ToolkitContext& context_;
    xcb_window_t window_ = XCB_NONE;
    Timer retry_;
    Lifetime lifetime_;
};

}  // namespace morvel::x11
