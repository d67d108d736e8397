// Events as views receive them. Locations are in the window's coordinates, y upwards.
#pragma once

#include <functional>
#include <memory>

#include "Platform/Mac/apple/CGGeometry.h"
#include "Platform/Mac/apple/Foundation/NSString.h"
#include "Util/Subscription.h"

namespace morvel::mac {

inline constexpr NSUInteger NSEventTypeLeftMouseDown = 1;
inline constexpr NSUInteger NSEventTypeLeftMouseUp = 2;
inline constexpr NSUInteger NSEventTypeRightMouseDown = 3;
inline constexpr NSUInteger NSEventTypeLeftMouseDragged = 6;
inline constexpr NSUInteger NSEventTypeOtherMouseDown = 25;
inline constexpr NSUInteger NSEventTypeScrollWheel = 22;
inline constexpr NSUInteger NSEventMaskLeftMouseDown = 0x2;
inline constexpr NSUInteger NSEventMaskRightMouseDown = 0x8;
inline constexpr NSUInteger NSEventMaskOtherMouseDown = 0x2000000;
inline constexpr NSUInteger kAnyPress =
    NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown | NSEventMaskOtherMouseDown;
static_assert(kAnyPress == 0x200000a);
inline constexpr NSUInteger NSEventModifierFlagControl = 0x40000;
inline constexpr NSUInteger NSEventModifierFlagCommand = 0x100000;
inline constexpr NSUInteger NSEventModifierFlagDeviceIndependentFlagsMask = 0xffff0000;
inline constexpr NSUInteger NSEventPhaseNone = 0;

class NSEvent : public NSObject {
public:
    static constexpr const char* kClass = "NSEvent";
    using NSObject::NSObject;

    /// Which buttons are down now, one bit each, the left one first.
    static NSUInteger pressedMouseButtons() { return send<NSUInteger>(ClassOf<NSEvent>{}, "pressedMouseButtons"_sel); }
    /// In screen coordinates: the upper edge of the pointed pixel, so that y is never less than the lower end of a
    /// display and may be its upper end.
    static CGPoint mouseLocation() { return send<CGPoint>(ClassOf<NSEvent>{}, "mouseLocation"_sel); }
    NSUInteger type() const { return send<NSUInteger>(*this, "type"_sel); }
    /// Empty for an event in no window of this program.
    Id window() const { return send<Id>(*this, "window"_sel); }
    CGPoint locationInWindow() const { return send<CGPoint>(*this, "locationInWindow"_sel); }
    NSUInteger modifierFlags() const { return send<NSUInteger>(*this, "modifierFlags"_sel); }
    /// Of a key. Empty for a dead key.
    NSString charactersIgnoringModifiers() const { return send<NSString>(*this, "charactersIgnoringModifiers"_sel); }
    NSInteger clickCount() const { return send<NSInteger>(*this, "clickCount"_sel); }
    /// Calls `seen` on the main thread for events of other programs, until the token dies. They get them all the same.
    [[nodiscard]] static Subscription monitorGlobally(NSUInteger mask, std::function<void(NSEvent)> seen) {
        const Id monitor = send<Id>(ClassOf<NSEvent>{}, "addGlobalMonitorForEventsMatchingMask:handler:"_sel, mask,
                                    Block<void(NSEvent)>(std::move(seen)));
        if (!monitor) return {};
        return Subscription([monitor] { send(ClassOf<NSEvent>{}, "removeMonitor:"_sel, monitor); });
    }
    /// The same for events of this program, before they go to its views. `seen` may end the token.
    [[nodiscard]] static Subscription monitorLocally(NSUInteger mask, std::function<void(NSEvent)> seen) {
        const auto shared = std::make_shared<const std::function<void(NSEvent)>>(std::move(seen));
        const auto pass = [shared](const NSEvent& event) {
            const auto kept = shared;  // ending the token ends the block, and what it holds
            (*kept)(event);
            return event;
        };
        const Id monitor = send<Id>(ClassOf<NSEvent>{}, "addLocalMonitorForEventsMatchingMask:handler:"_sel, mask,
                                    Block<NSEvent(NSEvent)>(pass));
        if (!monitor) return {};
        return Subscription([monitor] { send(ClassOf<NSEvent>{}, "removeMonitor:"_sel, monitor); });
    }
    /// Of a scroll: positive when what is shown moves right and down. In points where precise, in lines else.
    double scrollingDeltaX() const { return send<double>(*this, "scrollingDeltaX"_sel); }
    double scrollingDeltaY() const { return send<double>(*this, "scrollingDeltaY"_sel); }
    bool hasPreciseScrollingDeltas() const { return send<bool>(*this, "hasPreciseScrollingDeltas"_sel); }
    /// Not None while a scroll runs on after the fingers have left the touchpad.
    NSUInteger momentumPhase() const { return send<NSUInteger>(*this, "momentumPhase"_sel); }
    NSInteger buttonNumber() const { return send<NSInteger>(*this, "buttonNumber"_sel); }
};

}  // namespace morvel::mac
