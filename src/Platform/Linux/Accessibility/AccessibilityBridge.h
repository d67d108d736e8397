// What the toolkit tells about its windows to assistive programs such as screen readers, and the way to the module
// that passes it on.
#pragma once

#include "Platform/Linux/Accessibility/AccessibleWindow.h"

namespace morvel::x11 {

/// Implemented by the module. Main thread only; nothing of it calls back into the toolkit before the call returns.
class AccessibilityBridge {
public:
    virtual ~AccessibilityBridge() = default;

    /// The window is new, was shown or hidden, or something about its views is other than before.
    virtual void windowChanged(AccessibleWindow& window) = 0;
    /// The window ends; unknown ones are ignored.
    virtual void windowRemoved(AccessibleWindow& window) = 0;
    /// The view may be half destroyed: only its identity counts.
    virtual void viewWillDetach(const ui::View& view) = 0;

    /// Another toolkit of this process shows windows too: those are the children of this AtkObject, which outlives the
    /// bridge. At most one.
    virtual void addWindowsOf(void* otherRoot) = 0;
};

/// The module's only entry. Null when its version is not the program's or when no assistive program can be reached
/// at the address (of the accessibility bus, as D-Bus writes addresses). The caller deletes the bridge. At most one
/// bridge is alive at a time.
using MakeAccessibilityBridge = AccessibilityBridge*(const char* version, const char* busAddress);
inline constexpr const char* kMakeAccessibilityBridge = "morvelMakeAccessibilityBridge";

}  // namespace morvel::x11
