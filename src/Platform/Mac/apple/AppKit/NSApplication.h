// The application object, its appearance, and how it presents itself.
#pragma once

#include "Platform/Mac/apple/AppKit/NSAppearance.h"
#include "Platform/Mac/apple/AppKit/NSControls.h"
#include "Platform/Mac/apple/AppKit/NSEvent.h"

namespace morvel::mac {

using NSApplicationActivationPolicy = NSInteger;
inline constexpr NSApplicationActivationPolicy NSApplicationActivationPolicyRegular = 0;
inline constexpr NSApplicationActivationPolicy NSApplicationActivationPolicyAccessory = 1;

class NSApplication : public NSObject {
public:
    static constexpr const char* kClass = "NSApplication";
    using NSObject::NSObject;

    static NSApplication shared() { return send<NSApplication>(ClassOf<NSApplication>{}, "sharedApplication"_sel); }
    bool setActivationPolicy(NSApplicationActivationPolicy policy) const {
        return send<bool>(*this, "setActivationPolicy:"_sel, policy);
    }
    /// Not retained: the caller keeps the delegate.
    void setDelegate(const Id& delegate) const { send(*this, "setDelegate:"_sel, delegate); }
    /// Empty follows the system.
    void setAppearance(const NSAppearance& appearance) const { send(*this, "setAppearance:"_sel, appearance); }
    NSAppearance effectiveAppearance() const { return send<NSAppearance>(*this, "effectiveAppearance"_sel); }
    void activateIgnoringOtherApps() const {
        constexpr bool kIgnoring = true;
        send(*this, "activateIgnoringOtherApps:"_sel, kIgnoring);
    }
    NSImage applicationIconImage() const { return send<NSImage>(*this, "applicationIconImage"_sel); }
    /// Empty outside the handling of an event.
    NSEvent currentEvent() const { return send<NSEvent>(*this, "currentEvent"_sel); }
    /// To the first object that answers it, from what has the keyboard's focus upwards. False: none does.
    bool sendAction(Selector action, const Id& sender) const {
        return send<bool>(*this, "sendAction:to:from:"_sel, action, nullptr, sender);
    }
    void run() const { send(*this, "run"_sel); }
    void terminate(const Id& sender = nullptr) const { send(*this, "terminate:"_sel, sender); }
};

}  // namespace morvel::mac
