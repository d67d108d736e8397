// Form windows for whoever asks for the first one: until then the desktop's toolkit is not in the process.
#pragma once

#include <memory>

#include "Platform/Linux/Accessibility/AccessibilityBridge.h"
#include "Platform/Linux/Forms/FormBridge.h"
#include "Platform/Log.h"

namespace morvel::x11 {

/// Main thread only. Outlives its windows.
class FormService {
public:
    /// The log outlives it.
    explicit FormService(Log& log) : log_(log) {}

    /// Null, with a line in the log, when the module cannot be used.
    std::unique_ptr<ui::FormWindowPeer> makeWindow(ui::Form form, bool dark);
    void setDark(bool dark);
    /// From now on the windows are known to assistive programs; null ends it, which has to come before the bridge's
    /// end.
    void setAccessibilityBridge(AccessibilityBridge* bridge);

private:
    void tellOfWindows();

    Log& log_;
    std::unique_ptr<FormBridge> bridge_;
    AccessibilityBridge* accessibility_ = nullptr;  // null while nobody asks
};

}  // namespace morvel::x11
