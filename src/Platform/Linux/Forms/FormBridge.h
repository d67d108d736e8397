// The way to the module that shows form windows with the desktop's own toolkit.
#pragma once

#include <memory>

#include "UI/Form.h"

namespace morvel::x11 {

/// Implemented by the module. Main thread only. Outlives its windows.
class FormBridge {
public:
    virtual ~FormBridge() = default;

    virtual std::unique_ptr<ui::FormWindowPeer> makeWindow(ui::Form form) = 0;
    /// The windows, those on the screen included, are dark from now on, or light.
    virtual void setDark(bool dark) = 0;
    /// What the toolkit tells assistive programs: an AtkObject, whose children are the windows that it shows. Good for
    /// the life of the process; asked for only where there are such programs.
    virtual void* accessibleRoot() = 0;
};

/// The module's only entry. Null when its version is not the program's or when the toolkit cannot reach the display.
/// The caller deletes the bridge. At most one bridge is made.
using MakeFormBridge = FormBridge*(const char* version);
inline constexpr const char* kMakeFormBridge = "morvelMakeFormBridge";

}  // namespace morvel::x11
