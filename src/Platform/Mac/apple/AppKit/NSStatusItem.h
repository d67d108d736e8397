// The application's item in the system's menu bar, and modal questions.
#pragma once

#include "Platform/Mac/apple/AppKit/NSControls.h"
#include "Platform/Mac/apple/AppKit/NSMenu.h"

namespace morvel::mac {

inline constexpr double NSVariableStatusItemLength = -1.0;
inline constexpr NSInteger NSAlertFirstButtonReturn = 1000;

class NSStatusItem : public NSObject {
public:
    static constexpr const char* kClass = "NSStatusItem";
    using NSObject::NSObject;

    NSButton button() const { return send<NSButton>(*this, "button"_sel); }
    void setMenu(const NSMenu& menu) const { send(*this, "setMenu:"_sel, menu); }
};

class NSStatusBar : public NSObject {
public:
    static constexpr const char* kClass = "NSStatusBar";
    using NSObject::NSObject;

    static NSStatusBar system() { return send<NSStatusBar>(ClassOf<NSStatusBar>{}, "systemStatusBar"_sel); }
    NSStatusItem statusItem(double length) const {
        return send<NSStatusItem>(*this, "statusItemWithLength:"_sel, length);
    }
    void remove(const NSStatusItem& item) const { send(*this, "removeStatusItem:"_sel, item); }
    double thickness() const { return send<double>(*this, "thickness"_sel); }
};

class NSAlert : public NSObject {
public:
    static constexpr const char* kClass = "NSAlert";
    using NSObject::NSObject;

    void setMessageText(const NSString& text) const { send(*this, "setMessageText:"_sel, text); }
    void setInformativeText(const NSString& text) const { send(*this, "setInformativeText:"_sel, text); }
    void addButton(const NSString& title) const { send<NSButton>(*this, "addButtonWithTitle:"_sel, title); }
    /// Blocks until answered: NSAlertFirstButtonReturn plus the index of the button.
    NSInteger runModal() const { return send<NSInteger>(*this, "runModal"_sel); }
};

}  // namespace morvel::mac
