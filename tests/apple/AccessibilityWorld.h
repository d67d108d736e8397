// The interfaces of other applications as the Accessibility functions show them, scripted by tests: elements with
// attributes, notifications, and everything that goes wrong with them.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "CoreFoundation.h"
#include "Platform/Mac/apple/Accessibility.h"
#include "SystemObjects.h"

namespace morvel::mac::checked {

/// A point, a size or a rectangle as the value of an attribute.
Id makeValue(CGPoint point);
Id makeValue(CGSize size);
Id makeValue(CGRect rectangle);

class AccessibilityWorld {
public:
    static AccessibilityWorld& process();
    void reset() { *this = AccessibilityWorld(); }

    bool isTrusted = true;
    bool hasPrompted = false;

    /// The application element of a process; the same one for each call.
    Id application(std::int32_t pid);
    Id makeElement(std::int32_t pid);
    struct State {
        std::map<std::string, Id> attributes;
        std::map<std::string, AXError> errors;  // of attributes and actions
        std::uint32_t windowNumber = 0;         // zero: the server knows no such window
        bool isGone = false;
    };
    State& state(const ElementIdentity& element) { return states_[element.serial]; }
    State& state(const Id& element) { return state(*payloadOf<ElementIdentity>(element)); }
    void set(const Id& element, const std::string& attribute, const Id& value) {
        state(element).attributes[attribute] = value;
    }
    /// What the element has now; empty when there is no such attribute.
    Id value(const Id& element, const std::string& attribute) { return state(element).attributes[attribute]; }

    // Faults. kAXErrorSuccess heals.
    void fail(const Id& element, const std::string& name, AXError error) { state(element).errors[name] = error; }
    /// Every call about the process fails, as for one that hangs (kAXErrorCannotComplete).
    void failProcess(std::int32_t pid, AXError error) { processErrors_[pid] = error; }
    /// The next `times` subscriptions of the process to the notification fail.
    void refuseSubscription(std::int32_t pid, const std::string& notification, AXError error, int times) {
        refusals_[{pid, notification}] = {error, times};
    }
    /// The element is gone: every call about it fails.
    void destroy(const Id& element) { state(element).isGone = true; }

    /// What the application does when it is acted upon: set to let a raise move the focus, a close destroy the window.
    std::function<void(const ElementIdentity& element, const std::string& action)> performed;
    std::function<void(const ElementIdentity& element, const std::string& attribute)> written;

    /// Tells the observers whose source is on the run loop and that subscribed to this element or its application.
    void post(const Id& element, const std::string& notification);
    /// What was changed and done, in order: "set AXMinimized", "perform AXRaise", "time-out 0.5".
    std::vector<std::string> log;
    /// How many calls asked another process something, answered or not.
    int questions = 0;

    // For the C functions.
    struct Subscription {
        ElementIdentity element;
        std::string notification;
        void* context;
    };
    struct Observer {
        std::int32_t pid;
        AXObserverCallback callback;
        Id source;
        std::vector<Subscription> subscriptions;
    };
    AXError errorFor(const ElementIdentity& element, const std::string& attribute);
    void write(const ElementIdentity& element, const std::string& name, const Id& value);
    AXError subscriptionError(std::int32_t pid, const std::string& notification);
    ElementIdentity applicationIdentity(std::int32_t pid);
    void addObserver(RawObject observer) { observers_.push_back(observer); }

private:
    std::uint64_t lastSerial_ = 0;
    std::map<std::uint64_t, State> states_;
    std::map<std::int32_t, std::uint64_t> applications_;
    std::map<std::int32_t, AXError> processErrors_;
    std::map<std::pair<std::int32_t, std::string>, std::pair<AXError, int>> refusals_;
    std::vector<RawObject> observers_;  // not owned; dead ones are skipped
};

inline AccessibilityWorld& accessibility() {
    return AccessibilityWorld::process();
}

}  // namespace morvel::mac::checked
