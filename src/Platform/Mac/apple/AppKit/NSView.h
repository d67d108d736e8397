// Views, their layers and tracking areas.
#pragma once

#include "Platform/Mac/apple/AppKit/NSAppearance.h"
#include "Platform/Mac/apple/AppKit/NSColor.h"
#include "Platform/Mac/apple/CGGeometry.h"
#include "Platform/Mac/apple/Foundation/NSArray.h"
#include "Platform/Mac/apple/Foundation/NSDictionary.h"

namespace morvel::mac {

inline constexpr NSUInteger NSViewWidthSizable = 2;
inline constexpr NSUInteger NSViewHeightSizable = 16;
inline constexpr NSUInteger NSViewMinXMargin = 1;
inline constexpr NSInteger NSWindowBelow = -1;
inline constexpr NSUInteger NSTrackingMouseEnteredAndExited = 1;
inline constexpr NSUInteger NSTrackingMouseMoved = 2;
inline constexpr NSUInteger NSTrackingActiveAlways = 128;
inline constexpr NSUInteger NSTrackingInVisibleRect = 512;

class CALayer : public NSObject {
public:
    static constexpr const char* kClass = "CALayer";
    using NSObject::NSObject;

    void setBackgroundColor(CGColorRef color) const { send(*this, "setBackgroundColor:"_sel, color); }
    void setBorderColor(CGColorRef color) const { send(*this, "setBorderColor:"_sel, color); }
    void setBorderWidth(double points) const { send(*this, "setBorderWidth:"_sel, points); }
    void setCornerRadius(double points) const { send(*this, "setCornerRadius:"_sel, points); }
};

class NSTrackingArea : public NSObject {
public:
    static constexpr const char* kClass = "NSTrackingArea";
    using NSObject::NSObject;

    /// The owner is not retained; it receives mouseEntered: and its kin.
    static NSTrackingArea make(CGRect rect, NSUInteger options, const Id& owner) {
        return create<NSTrackingArea>("initWithRect:options:owner:userInfo:"_sel, rect, options, owner, NSDictionary());
    }
};

/// Pixels in memory, to draw a view into.
class NSBitmapImageRep : public NSObject {
public:
    static constexpr const char* kClass = "NSBitmapImageRep";
    using NSObject::NSObject;
};

extern "C" {
extern const objc::RawObject NSAccessibilityButtonRole;
}

class NSView : public NSObject {
public:
    static constexpr const char* kClass = "NSView";
    using NSObject::NSObject;

    static NSView make(CGRect frame) { return create<NSView>("initWithFrame:"_sel, frame); }
    CGRect frame() const { return send<CGRect>(*this, "frame"_sel); }
    CGRect bounds() const { return send<CGRect>(*this, "bounds"_sel); }
    void setFrame(CGRect frame) const { send(*this, "setFrame:"_sel, frame); }
    void setHidden(bool hidden) const { send(*this, "setHidden:"_sel, hidden); }
    void setAlphaValue(double alpha) const { send(*this, "setAlphaValue:"_sel, alpha); }
    void setToolTip(const NSString& text) const { send(*this, "setToolTip:"_sel, text); }
    void setAccessibilityLabel(const NSString& text) const { send(*this, "setAccessibilityLabel:"_sel, text); }
    void setAccessibilityRole(const NSString& role) const { send(*this, "setAccessibilityRole:"_sel, role); }
    void setAccessibilityElement(bool is) const { send(*this, "setAccessibilityElement:"_sel, is); }
    void setAutoresizingMask(NSUInteger mask) const { send(*this, "setAutoresizingMask:"_sel, mask); }
    void setWantsLayer(bool wants) const { send(*this, "setWantsLayer:"_sel, wants); }
    CALayer layer() const { return send<CALayer>(*this, "layer"_sel); }
    void addSubview(const NSView& child) const { send(*this, "addSubview:"_sel, child); }
    /// Directly behind `sibling`.
    void addSubviewBelow(const NSView& child, const NSView& sibling) const {
        send(*this, "addSubview:positioned:relativeTo:"_sel, child, NSWindowBelow, sibling);
    }
    /// Reorders without taking away those that stay. Back to front.
    void setSubviews(const std::vector<NSView>& views) const { send(*this, "setSubviews:"_sel, NSArray::from(views)); }
    void removeFromSuperview() const { send(*this, "removeFromSuperview"_sel); }
    NSView superview() const { return send<NSView>(*this, "superview"_sel); }
    /// Of class NSWindow; empty while the view is in none.
    Id window() const { return send<Id>(*this, "window"_sel); }
    NSArray subviews() const { return send<NSArray>(*this, "subviews"_sel); }
    void addTrackingArea(const NSTrackingArea& area) const { send(*this, "addTrackingArea:"_sel, area); }
    void removeTrackingArea(const NSTrackingArea& area) const { send(*this, "removeTrackingArea:"_sel, area); }
    NSArray trackingAreas() const { return send<NSArray>(*this, "trackingAreas"_sel); }
    /// From the coordinates of `from`, or the window's when that is empty, to this view's.
    CGPoint convertPointFrom(CGPoint point, const NSView& from) const {
        return send<CGPoint>(*this, "convertPoint:fromView:"_sel, point, from);
    }
    /// The deepest view under a point of the superview's coordinates; empty outside.
    NSView hitTest(CGPoint pointInSuperview) const { return send<NSView>(*this, "hitTest:"_sel, pointInSuperview); }
    NSAppearance effectiveAppearance() const { return send<NSAppearance>(*this, "effectiveAppearance"_sel); }
    void setClipsToBounds(bool clips) const { send(*this, "setClipsToBounds:"_sel, clips); }
    /// Before the next display, `layout` is called.
    void setNeedsLayout(bool needs) const { send(*this, "setNeedsLayout:"_sel, needs); }
    void setNeedsDisplay(bool needs) const { send(*this, "setNeedsDisplay:"_sel, needs); }
    /// Pixels that fit a part of the view; empty for a part without any.
    NSBitmapImageRep bitmapForCachingDisplay(CGRect part) const {
        return send<NSBitmapImageRep>(*this, "bitmapImageRepForCachingDisplayInRect:"_sel, part);
    }
    /// Draws the part of the view, and of what it contains, now.
    void cacheDisplay(CGRect part, const NSBitmapImageRep& pixels) const {
        send(*this, "cacheDisplayInRect:toBitmapImageRep:"_sel, part, pixels);
    }
    /// Of strings. Adds to what is registered already.
    void registerForDraggedTypes(const NSArray& types) const { send(*this, "registerForDraggedTypes:"_sel, types); }
    void unregisterDraggedTypes() const { send(*this, "unregisterDraggedTypes"_sel); }
};

}  // namespace morvel::mac
