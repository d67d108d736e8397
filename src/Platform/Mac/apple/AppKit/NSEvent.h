// Events as views receive them. Locations are in the window's coordinates, y upwards.
#pragma once

#include "Platform/Mac/apple/CGGeometry.h"
#include "Platform/Mac/apple/Object.h"

namespace morvel::mac {

inline constexpr NSUInteger NSEventTypeLeftMouseDown = 1;
inline constexpr NSUInteger NSEventTypeLeftMouseUp = 2;
inline constexpr NSUInteger NSEventTypeRightMouseDown = 3;
inline constexpr NSUInteger NSEventTypeLeftMouseDragged = 6;

class NSEvent : public NSObject {
public:
    static constexpr const char* kClass = "NSEvent";
    using NSObject::NSObject;

    /// Which buttons are down now, one bit each, the left one first.
    static NSUInteger pressedMouseButtons() { return send<NSUInteger>(ClassOf<NSEvent>{}, "pressedMouseButtons"_sel); }
    NSUInteger type() const { return send<NSUInteger>(*this, "type"_sel); }
    CGPoint locationInWindow() const { return send<CGPoint>(*this, "locationInWindow"_sel); }
    NSUInteger modifierFlags() const { return send<NSUInteger>(*this, "modifierFlags"_sel); }
    NSInteger clickCount() const { return send<NSInteger>(*this, "clickCount"_sel); }
    NSInteger buttonNumber() const { return send<NSInteger>(*this, "buttonNumber"_sel); }
};

}  // namespace morvel::mac
