// The state of the scripted elements, and delivery of their notifications.
#include "AccessibilityWorld.h"

#include "Platform/Mac/objc/AutoreleasePool.h"

namespace morvel::mac::checked {

Id makeValue(CGPoint point) {
    return Id(objc::kAdopt, objectOf(AXValueCreate(kAXValueTypeCGPoint, &point)));
}
Id makeValue(CGSize size) {
    return Id(objc::kAdopt, objectOf(AXValueCreate(kAXValueTypeCGSize, &size)));
}
Id makeValue(CGRect rectangle) {
    return Id(objc::kAdopt, objectOf(AXValueCreate(kAXValueTypeCGRect, &rectangle)));
}

AccessibilityWorld& AccessibilityWorld::process() {
    static AccessibilityWorld instance;
    return instance;
}

ElementIdentity AccessibilityWorld::applicationIdentity(std::int32_t pid) {
    auto& serial = applications_[pid];
    if (serial == 0) serial = ++lastSerial_;
    return {pid, serial};
}

Id AccessibilityWorld::application(std::int32_t pid) {
    return runtime().make("__AXUIElement", applicationIdentity(pid));
}
Id AccessibilityWorld::makeElement(std::int32_t pid) {
    return runtime().make("__AXUIElement", ElementIdentity{pid, ++lastSerial_});
}

AXError AccessibilityWorld::errorFor(const ElementIdentity& element, const std::string& attribute) {
    ++questions;
    if (!isTrusted) return kAXErrorAPIDisabled;
    if (const auto found = processErrors_.find(element.pid); found != processErrors_.end() && found->second) {
        return found->second;
    }
    const State& found = state(element);
    if (found.isGone) return kAXErrorInvalidUIElement;
    const auto error = found.errors.find(attribute);
    return error == found.errors.end() ? kAXErrorSuccess : error->second;
}

void AccessibilityWorld::write(const ElementIdentity& element, const std::string& name, const Id& value) {
    log.push_back("set " + name);
    state(element).attributes[name] = value;
    if (written) written(element, name);
}

AXError AccessibilityWorld::subscriptionError(std::int32_t pid, const std::string& notification) {
    auto& [error, times] = refusals_[{pid, notification}];
    return times > 0 && times-- ? error : kAXErrorSuccess;
}

void AccessibilityWorld::post(const Id& element, const std::string& notification) {
    const objc::AutoreleasePool pool;
    const ElementIdentity identity = *payloadOf<ElementIdentity>(element);
    const Id name = makeString(notification);
    // Copies: a callback may create and remove observers.
    for (const RawObject raw : std::vector<RawObject>(observers_)) {
        if (raw->isDead) continue;
        const Id alive(raw);
        const Observer observer = *payloadOf<Observer>(raw);
        if (!payloadOf<RunLoopSource>(observer.source)->isScheduled) continue;
        for (const Subscription& subscription : observer.subscriptions) {
            const bool isMeant =
                subscription.element == identity ||
                (observer.pid == identity.pid && subscription.element == applicationIdentity(identity.pid));
            if (!isMeant || subscription.notification != notification) continue;
            observer.callback(reinterpret_cast<AXObserverRef>(raw), reinterpret_cast<AXUIElementRef>(element.raw()),
                              static_cast<CFStringRef>(referenceTo(name.raw())), subscription.context);
            break;
        }
    }
}

}  // namespace morvel::mac::checked
