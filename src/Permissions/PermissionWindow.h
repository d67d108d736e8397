// Explains to the person why the accessibility permission is needed, until it is granted.
#pragma once

#include <functional>
#include <memory>

#include "Permissions/AXPermissionGate.h"
#include "UI/Toolkit.h"

namespace morvel {

/// Main thread only.
class PermissionWindow {
public:
    /// `gate` and `toolkit` outlive the window. `onGranted` is called once the permission is there and the window
    /// closed.
    PermissionWindow(AXPermissionGate& gate, ui::Toolkit& toolkit, std::function<void()> onGranted);

    /// Shows the window, has the system prompt, and waits. Closing the window by hand does not end the waiting.
    void show();

private:
    AXPermissionGate& gate_;
    ui::Toolkit& toolkit_;
    std::function<void()> onGranted_;
    std::unique_ptr<ui::PromptPeer> window_;
};

}  // namespace morvel
