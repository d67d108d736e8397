// Switches an application's enhanced interface off for the length of a scope.
#pragma once

#include "Platform/Mac/apple/Accessibility.h"

namespace morvel::mac {

/// Assistive programs switch it on. Windows then glide to a frame that is set, and report places on the way.
class EnhancedInterfacePause {
public:
    /// `previous` is what "AXEnhancedUserInterface" of the application holds; anything but a true value is left alone.
    EnhancedInterfacePause(CFRef<AXUIElementRef> application, CFRef<CFTypeRef> previous);
    /// Writes back exactly the previous value, whatever has become of the application.
    ~EnhancedInterfacePause();
    EnhancedInterfacePause(const EnhancedInterfacePause&) = delete;
    EnhancedInterfacePause& operator=(const EnhancedInterfacePause&) = delete;

    static CFRef<CFStringRef> attribute() { return cfString("AXEnhancedUserInterface"); }

private:
    CFRef<AXUIElementRef> application_;  // empty when there is nothing to restore
    CFRef<CFTypeRef> previous_;
};

}  // namespace morvel::mac
