// The Accessibility API: elements of other applications' interfaces, their attributes, actions and notifications.
// Coordinates are the accessibility ones: origin at the top left of the main display, y downwards.
#pragma once

#include <cstdint>

#include "Platform/Mac/apple/CF.h"
#include "Platform/Mac/apple/CFRef.h"
#include "Platform/Mac/apple/CGGeometry.h"

namespace morvel::mac {

struct AXUIElementTag;
struct AXObserverTag;
struct AXValueTag;

using AXUIElementRef = AXUIElementTag*;
using AXObserverRef = AXObserverTag*;
using AXValueRef = AXValueTag*;
using AXError = std::int32_t;
using AXValueType = std::uint32_t;
/// Runs on the run loop that the observer's source was added to. `context` is what was given with the notification.
using AXObserverCallback = void (*)(AXObserverRef observer, AXUIElementRef element, CFStringRef notification,
                                    void* context);

inline constexpr AXError kAXErrorSuccess = 0;
inline constexpr AXError kAXErrorFailure = -25200;
inline constexpr AXError kAXErrorIllegalArgument = -25201;
inline constexpr AXError kAXErrorInvalidUIElement = -25202;
inline constexpr AXError kAXErrorCannotComplete = -25204;
inline constexpr AXError kAXErrorAttributeUnsupported = -25205;
inline constexpr AXError kAXErrorActionUnsupported = -25206;
inline constexpr AXError kAXErrorNotificationUnsupported = -25207;
inline constexpr AXError kAXErrorNotImplemented = -25208;
inline constexpr AXError kAXErrorNotificationAlreadyRegistered = -25209;
inline constexpr AXError kAXErrorAPIDisabled = -25211;
inline constexpr AXError kAXErrorNoValue = -25212;

inline constexpr AXValueType kAXValueTypeCGPoint = 1;
inline constexpr AXValueType kAXValueTypeCGSize = 2;
inline constexpr AXValueType kAXValueTypeCGRect = 3;

extern "C" {
Boolean AXIsProcessTrusted();
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options);
CFTypeID AXUIElementGetTypeID();
AXUIElementRef AXUIElementCreateApplication(std::int32_t pid);
AXUIElementRef AXUIElementCreateSystemWide();
AXError AXUIElementGetPid(AXUIElementRef element, std::int32_t* pid);
AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float seconds);
AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef* value);
AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef value);
AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action);
AXError AXObserverCreate(std::int32_t pid, AXObserverCallback callback, AXObserverRef* observer);
AXError AXObserverAddNotification(AXObserverRef observer, AXUIElementRef element, CFStringRef notification,
                                  void* context);
CFRunLoopSourceRef AXObserverGetRunLoopSource(AXObserverRef observer);
CFTypeID AXValueGetTypeID();
AXValueRef AXValueCreate(AXValueType type, const void* value);
AXValueType AXValueGetType(AXValueRef value);
Boolean AXValueGetValue(AXValueRef value, AXValueType type, void* result);

extern const CFStringRef kAXTrustedCheckOptionPrompt;
}

template <>
inline CFTypeID cfTypeID<AXUIElementRef>() {
    return AXUIElementGetTypeID();
}
template <>
inline CFTypeID cfTypeID<AXValueRef>() {
    return AXValueGetTypeID();
}

}  // namespace morvel::mac

namespace morvel::mac::objc {

template <>
struct Encode<AXUIElementTag> {
    static constexpr FixedString value{"{__AXUIElement=}"};
};
template <>
struct Encode<AXObserverTag> {
    static constexpr FixedString value{"{__AXObserver=}"};
};
template <>
struct Encode<AXValueTag> {
    static constexpr FixedString value{"{__AXValue=}"};
};

}  // namespace morvel::mac::objc
