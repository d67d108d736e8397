// The state of the scripted elements, and delivery of their notifications.
#include "AccessibilityWorld.h"

#include "Platform/Mac/objc/AutoreleasePool.h"

namespace morvel::mac::checked {

AccessibilityWorld& AccessibilityWorld::process() {
    static AccessibilityWorld instance;
    return instance;
}

AccessibilityWorld::State& AccessibilityWorld::state(const Id& element) {
    return states_[payloadOf<ElementIdentity>(element.raw())->serial];
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

void AccessibilityWorld::set(const Id& element, const std::string& attribute, const Id& value) {
    state(element).attributes[attribute] = value;
}
void AccessibilityWorld::setPoint(const Id& element, const std::string& attribute, CGPoint value) {
    set(element, attribute, Id(objc::kAdopt, objectOf(AXValueCreate(kAXValueTypeCGPoint, &value))));
}
void AccessibilityWorld::setSize(const Id& element, const std::string& attribute, CGSize value) {
    set(element, attribute, Id(objc::kAdopt, objectOf(AXValueCreate(kAXValueTypeCGSize, &value))));
}
Id AccessibilityWorld::value(const Id& element, const std::string& attribute) {
    return state(element).attributes[attribute];
}
void AccessibilityWorld::setWindowNumber(const Id& element, std::uint32_t number) {
    state(element).windowNumber = number;
}
void AccessibilityWorld::fail(const Id& element, const std::string& attribute, AXError error) {
    state(element).errors[attribute] = error;
}
void AccessibilityWorld::refuseSubscription(std::int32_t pid, const std::string& notification, AXError error,
                                            int times) {
    refusals_[std::to_string(pid) + " " + notification] = {error, times};
}

AXError AccessibilityWorld::errorFor(const ElementIdentity& element, const std::string& attribute) {
    ++questions;
    if (!isTrusted) return kAXErrorAPIDisabled;
    if (const auto found = processErrors_.find(element.pid); found != processErrors_.end() && found->second) {
        return found->second;
    }
    const State& found = states_[element.serial];
    if (found.isGone) return kAXErrorInvalidUIElement;
    const auto error = found.errors.find(attribute);
    return error == found.errors.end() ? kAXErrorSuccess : error->second;
}

Id AccessibilityWorld::attribute(const ElementIdentity& element, const std::string& name) {
    const auto& attributes = states_[element.serial].attributes;
    const auto found = attributes.find(name);
    return found == attributes.end() ? Id() : found->second;
}
void AccessibilityWorld::write(const ElementIdentity& element, const std::string& name, const Id& value) {
    log.push_back("set " + name);
    states_[element.serial].attributes[name] = value;
    if (written) written(element, name);
}

AXError AccessibilityWorld::subscriptionError(std::int32_t pid, const std::string& notification) {
    const auto found = refusals_.find(std::to_string(pid) + " " + notification);
    if (found == refusals_.end() || found->second.second == 0) return kAXErrorSuccess;
    --found->second.second;
    return found->second.first;
}

void AccessibilityWorld::post(const Id& element, const std::string& notification) {
    const objc::AutoreleasePool pool;
    const ElementIdentity identity = *payloadOf<ElementIdentity>(element.raw());
    const Id name = makeString(notification);
    // Copies: a callback may create and remove observers.
    for (const RawObject raw : std::vector<RawObject>(observers_)) {
        if (raw->isDead) continue;
        const Id alive(raw);
        const Observer observer = *payloadOf<Observer>(raw);
        if (!payloadOf<RunLoopSource>(observer.source.raw())->isScheduled) continue;
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
