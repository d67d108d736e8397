// The application object, its appearance, and how it presents itself.
#pragma once

#include <functional>
#include <utility>

#include "Platform/Mac/apple/Foundation/NSString.h"

namespace morvel::mac {

using NSApplicationActivationPolicy = NSInteger;
inline constexpr NSApplicationActivationPolicy NSApplicationActivationPolicyRegular = 0;
inline constexpr NSApplicationActivationPolicy NSApplicationActivationPolicyAccessory = 1;
inline constexpr NSApplicationActivationPolicy NSApplicationActivationPolicyProhibited = 2;

extern "C" {
extern const objc::RawObject NSAppearanceNameAqua;
extern const objc::RawObject NSAppearanceNameDarkAqua;
}

class NSAppearance : public NSObject {
public:
    static constexpr const char* kClass = "NSAppearance";
    using NSObject::NSObject;

    static NSAppearance named(const NSString& name) {
        return send<NSAppearance>(ClassOf<NSAppearance>{}, "appearanceNamed:"_sel, name);
    }
    NSString name() const { return send<NSString>(*this, "name"_sel); }
    /// Runs `drawing` before it returns, with this appearance's colours and images.
    void performAsCurrentDrawingAppearance(std::function<void()> drawing) const {
        send(*this, "performAsCurrentDrawingAppearance:"_sel, Block<void()>(std::move(drawing)));
    }
};

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
    void activateIgnoringOtherApps(bool ignoring) const { send(*this, "activateIgnoringOtherApps:"_sel, ignoring); }
    void run() const { send(*this, "run"_sel); }
    void terminate(const Id& sender = nullptr) const { send(*this, "terminate:"_sel, sender); }
};

}  // namespace morvel::mac
