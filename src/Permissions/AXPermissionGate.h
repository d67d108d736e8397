// Waits for the person to grant the accessibility permission, without which no other program's windows can be seen.
#pragma once

#include <functional>

#include "Platform/Accessibility.h"
#include "Platform/MainLoop.h"

namespace morvel {

/// Main thread only.
class AXPermissionGate {
public:
    /// Both outlive the gate.
    AXPermissionGate(Accessibility& accessibility, MainLoop& mainLoop)
        : accessibility_(accessibility), mainLoop_(mainLoop) {}

    bool isTrusted() const { return accessibility_.isTrusted(); }
    /// Has the system ask the person, once.
    void prompt() { accessibility_.isTrustedAfterPrompt(); }
    void openSystemSettings() { accessibility_.openPermissionSettings(); }

    /// Calls `onGranted` once: at once if the permission is there, else within a second of its being granted. There is
    /// no notice of it, so it is polled for.
    void startPollingUntilGranted(std::function<void()> onGranted);

private:
    Accessibility& accessibility_;
    MainLoop& mainLoop_;
    Timer poll_;
};

}  // namespace morvel
