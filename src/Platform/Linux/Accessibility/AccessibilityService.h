// Makes the bar's windows known to assistive programs from the moment on in which the session asks for it.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Platform/Linux/Accessibility/AccessibilityBridge.h"
#include "Platform/Linux/Accessibility/AccessibilityRequest.h"
#include "Platform/Linux/UI/XToolkit.h"
#include "Platform/Log.h"

namespace morvel::x11 {

/// Main thread only. Until then the module with its libraries is not in the process; once loaded it stays.
class AccessibilityService {
public:
    /// All outlive it. The session is asked a while after this, when the bar has been painted.
    AccessibilityService(MainLoop& mainLoop, Log& log, XToolkit& toolkit);
    ~AccessibilityService();

private:
    void load(const std::string& busAddress);

    Log& log_;
    XToolkit& toolkit_;
    Timer start_;
    std::optional<AccessibilityRequest> request_;
    std::unique_ptr<AccessibilityBridge> bridge_;
};

}  // namespace morvel::x11
