// Has the keyboard for one of this program's windows, for as long as it lives.
#pragma once

#include <memory>

#include "Platform/Linux/UI/ToolkitContext.h"

namespace morvel::x11 {

/// A grab rather than the focus: the window that has the focus keeps it, so the application in front stays in front for
/// the window manager and for the bar, and has the keyboard back at once when this ends, or this program. Main thread
/// only.
class KeyboardGrab {
public:
    /// The context outlives it.
    explicit KeyboardGrab(ToolkitContext& context);
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
    std::shared_ptr<KeyboardGrab*> self_;  // for answers that may come after our end
};

}  // namespace morvel::x11
