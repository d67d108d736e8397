// The Accessibility functions over the scripted world.
#include <string>

#include "AccessibilityWorld.h"
#include "Platform/Mac/apple/Accessibility.h"

namespace morvel::mac {

using namespace checked;

namespace {

struct WrappedValue {
    AXValueType type;
    std::vector<unsigned char> bytes;
};

std::size_t sizeOfType(AXValueType type) {
    return type == kAXValueTypeCGRect ? sizeof(CGRect) : sizeof(CGPoint);
}

/// The identity behind an element; reports null and other objects, which crash on a Mac.
const ElementIdentity* identityOf(CFTypeRef element, const char* function) {
    const auto* const found = payloadOf<ElementIdentity>(objectOf(element));
    if (!found) runtime().faults().add(FaultKind::BadCall, std::string(function) + " was given no element");
    return found;
}

std::string textOf(CFStringRef string) {
    return checked::textOf(objectOf(string));
}

/// Asks the element's process: `act` says how it answers, unless it fails.
template <typename Act>
AXError ask(const char* function, AXUIElementRef element, CFStringRef about, Act act) {
    const auto* const identity = identityOf(element, function);
    if (!identity) return kAXErrorIllegalArgument;
    const std::string name = about ? textOf(about) : "";
    if (const AXError error = accessibility().errorFor(*identity, name)) return error;
    return act(*identity, name);
}

}  // namespace

extern "C" {
Boolean AXIsProcessTrusted() {
    return accessibility().isTrusted;
}
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options) {
    const auto prompt = options ? CFDictionaryGetValue(options, kAXTrustedCheckOptionPrompt) : nullptr;
    accessibility().hasPrompted = prompt && CFBooleanGetValue(static_cast<CFBooleanRef>(prompt));
    return accessibility().isTrusted;
}

AXUIElementRef AXUIElementCreateApplication(std::int32_t pid) {
    return reinterpret_cast<AXUIElementRef>(accessibility().application(pid).giveUp());
}
AXUIElementRef AXUIElementCreateSystemWide() {
    constexpr std::int32_t kSystemWide = 0;
    return reinterpret_cast<AXUIElementRef>(accessibility().application(kSystemWide).giveUp());
}
AXError AXUIElementGetPid(AXUIElementRef element, std::int32_t* pid) {
    const auto* const identity = identityOf(element, "AXUIElementGetPid");
    if (!identity) return kAXErrorIllegalArgument;
    *pid = identity->pid;
    return kAXErrorSuccess;
}
AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float seconds) {
    if (!identityOf(element, "AXUIElementSetMessagingTimeout")) return kAXErrorIllegalArgument;
    accessibility().log.push_back("time-out " + std::to_string(seconds));
    return kAXErrorSuccess;
}
AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef* value) {
    return ask("AXUIElementCopyAttributeValue", element, attribute, [&](const auto& identity, const auto& name) {
        const Id found = accessibility().state(identity).attributes[name];
        if (!found) return kAXErrorNoValue;
        *value = handOver(found);
        return kAXErrorSuccess;
    });
}
AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef value) {
    if (!value) return kAXErrorIllegalArgument;
    return ask("AXUIElementSetAttributeValue", element, attribute, [&](const auto& identity, const auto& name) {
        accessibility().write(identity, name, Id(objectOf(value)));
        return kAXErrorSuccess;
    });
}
AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action) {
    return ask("AXUIElementPerformAction", element, action, [](const auto& identity, const auto& name) {
        accessibility().log.push_back("perform " + name);
        if (accessibility().performed) accessibility().performed(identity, name);
        return kAXErrorSuccess;
    });
}

AXError AXObserverCreate(std::int32_t pid, AXObserverCallback callback, AXObserverRef* observer) {
    if (const AXError error = accessibility().errorFor(accessibility().applicationIdentity(pid), "")) return error;
    AccessibilityWorld::Observer state{pid, callback, runtime().make("__CFRunLoopSource", RunLoopSource{}), {}};
    Id made = runtime().make("__AXObserver", std::move(state));
    accessibility().addObserver(made.raw());
    *observer = reinterpret_cast<AXObserverRef>(made.giveUp());
    return kAXErrorSuccess;
}
AXError AXObserverAddNotification(AXObserverRef observer, AXUIElementRef element, CFStringRef notification,
                                  void* context) {
    auto* const state = payloadOf<AccessibilityWorld::Observer>(objectOf(observer));
    if (!state) return kAXErrorIllegalArgument;
    return ask("AXObserverAddNotification", element, nullptr, [&](const ElementIdentity& identity, const auto&) {
        const std::string name = textOf(notification);
        if (const AXError error = accessibility().subscriptionError(state->pid, name)) return error;
        for (const auto& known : state->subscriptions)
            if (known.element == identity && known.notification == name) return kAXErrorNotificationAlreadyRegistered;
        state->subscriptions.push_back({identity, name, context});
        return kAXErrorSuccess;
    });
}
CFRunLoopSourceRef AXObserverGetRunLoopSource(AXObserverRef observer) {
    const auto* const state = payloadOf<AccessibilityWorld::Observer>(objectOf(observer));
    return state ? reinterpret_cast<CFRunLoopSourceRef>(state->source.raw()) : nullptr;
}

AXValueRef AXValueCreate(AXValueType type, const void* value) {
    const auto* const bytes = static_cast<const unsigned char*>(value);
    Id made = runtime().make("__AXValue", WrappedValue{type, {bytes, bytes + sizeOfType(type)}});
    return reinterpret_cast<AXValueRef>(made.giveUp());
}
AXValueType AXValueGetType(AXValueRef value) {
    const auto* const wrapped = payloadOf<WrappedValue>(objectOf(value));
    return wrapped ? wrapped->type : 0;
}
Boolean AXValueGetValue(AXValueRef value, AXValueType type, void* result) {
    const auto* const wrapped = payloadOf<WrappedValue>(objectOf(value));
    if (!wrapped || wrapped->type != type) return false;
    std::memcpy(result, wrapped->bytes.data(), wrapped->bytes.size());
    return true;
}
}

}  // namespace morvel::mac
