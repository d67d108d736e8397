// Finds out whether the session wants programs to be accessible, without waiting for anybody.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Platform/Linux/System/BusCalls.h"

namespace morvel::x11 {

/// What the environment says. Never: NO_AT_BRIDGE=1. Always: GNOME_ACCESSIBILITY=1 or
/// QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1. QT_ACCESSIBILITY=1 is no request: distributions set it in every session, and a
/// person who needs nothing would pay for it.
enum class AccessibilityWish { Never, Ask, Always };

/// `value` is what a variable is set to, or null.
AccessibilityWish accessibilityWish(const std::function<const char*(const char* variable)>& value);

/// Asks org.a11y.Status on the session bus and then listens, so that a screen reader that is started later is served
/// too. Starts no service to ask it; without a session bus, or when the connection is lost, nothing more happens.
/// Main thread only.
class AccessibilityRequest {
public:
    /// `requested` is called at most once, in a later turn, with the accessibility bus's address; it may destroy this.
    AccessibilityRequest(AccessibilityWish wish, std::function<void(std::string)> requested);
    ~AccessibilityRequest();
    AccessibilityRequest(const AccessibilityRequest&) = delete;
    AccessibilityRequest& operator=(const AccessibilityRequest&) = delete;

private:
    void connected(GDBusConnection* bus);
    void listen();
    void stopListening();
    void askStatus();
    void askAddress();

    const AccessibilityWish wish_;
    std::function<void(std::string)> requested_;
    Subscription reaching_;
    std::unique_ptr<BusCalls> calls_;  // once the bus is reached
    guint watch_ = 0;
    guint changes_ = 0;
    bool isAddressAsked_ = false;
};

}  // namespace morvel::x11
