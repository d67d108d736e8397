// Menus, their items, and popovers.
#pragma once

#include "Platform/Mac/apple/AppKit/NSEvent.h"
#include "Platform/Mac/apple/AppKit/NSView.h"

namespace morvel::mac {

class NSMenu;

class NSMenuItem : public NSObject {
public:
    static constexpr const char* kClass = "NSMenuItem";
    using NSObject::NSObject;

    static NSMenuItem make(const NSString& title, Selector action, const NSString& keyEquivalent) {
        return create<NSMenuItem>("initWithTitle:action:keyEquivalent:"_sel, title, action, keyEquivalent);
    }
    static NSMenuItem separator() { return send<NSMenuItem>(ClassOf<NSMenuItem>{}, "separatorItem"_sel); }
    /// Not retained.
    void setTarget(const Id& target) const { send(*this, "setTarget:"_sel, target); }
    void setTag(NSInteger tag) const { send(*this, "setTag:"_sel, tag); }
    NSInteger tag() const { return send<NSInteger>(*this, "tag"_sel); }
    void setEnabled(bool enabled) const { send(*this, "setEnabled:"_sel, enabled); }
    void setState(NSInteger state) const { send(*this, "setState:"_sel, state); }
    inline void setSubmenu(const NSMenu& menu) const;
};

class NSMenu : public NSObject {
public:
    static constexpr const char* kClass = "NSMenu";
    using NSObject::NSObject;

    static NSMenu make(const NSString& title) { return create<NSMenu>("initWithTitle:"_sel, title); }
    void addItem(const NSMenuItem& item) const { send(*this, "addItem:"_sel, item); }
    void setAutoenablesItems(bool automatic) const { send(*this, "setAutoenablesItems:"_sel, automatic); }
    NSArray items() const { return send<NSArray>(*this, "itemArray"_sel); }
    /// At the event's place. Returns when the menu closed; the chosen item's action has been sent by then.
    void popUpContext(const NSEvent& event, const NSView& view) const {
        send(ClassOf<NSMenu>{}, "popUpContextMenu:withEvent:forView:"_sel, *this, event, view);
    }
    /// Returns when the menu closed; the chosen item's action has been sent by then. `view` may be empty: screen point.
    bool popUp(CGPoint at, const NSView& view) const {
        return send<bool>(*this, "popUpMenuPositioningItem:atLocation:inView:"_sel, NSMenuItem(), at, view);
    }
};

inline void NSMenuItem::setSubmenu(const NSMenu& menu) const {
    send(*this, "setSubmenu:"_sel, menu);
}

inline constexpr NSInteger NSPopoverBehaviorApplicationDefined = 0;
inline constexpr NSInteger NSPopoverBehaviorTransient = 1;
inline constexpr NSUInteger NSRectEdgeMinY = 1;
inline constexpr NSUInteger NSRectEdgeMaxY = 3;

class NSViewController : public NSObject {
public:
    static constexpr const char* kClass = "NSViewController";
    using NSObject::NSObject;

    void setView(const NSView& view) const { send(*this, "setView:"_sel, view); }
};

class NSPopover : public NSObject {
public:
    static constexpr const char* kClass = "NSPopover";
    using NSObject::NSObject;

    void setContentViewController(const NSViewController& controller) const {
        send(*this, "setContentViewController:"_sel, controller);
    }
    void setContentSize(CGSize size) const { send(*this, "setContentSize:"_sel, size); }
    void setBehavior(NSInteger behavior) const { send(*this, "setBehavior:"_sel, behavior); }
    void setAnimates(bool animates) const { send(*this, "setAnimates:"_sel, animates); }
    /// Not retained.
    void setDelegate(const Id& delegate) const { send(*this, "setDelegate:"_sel, delegate); }
    void show(CGRect relativeTo, const NSView& of, NSUInteger edge) const {
        send(*this, "showRelativeToRect:ofView:preferredEdge:"_sel, relativeTo, of, edge);
    }
    bool isShown() const { return send<bool>(*this, "isShown"_sel); }
    void close() const { send(*this, "close"_sel); }
    /// As a person does it.
    void performClose() const { send(*this, "performClose:"_sel, nullptr); }
};

}  // namespace morvel::mac
