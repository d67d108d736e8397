// Tells a text field's view what is typed into the native one.
#pragma once

#include "Platform/Mac/apple/AppKit/NSControls.h"
#include "UI/TextField.h"

namespace morvel::mac {

/// The C++ half of the native field's delegate, owned by it. AppKit may keep the delegate longer than the view lives.
struct FieldDelegate {
    static constexpr const char* kClassName = "MorvelFieldDelegate";

    /// The field does not keep its delegate.
    static NSObject make(ui::TextField& field, const NSTextField& native);
    /// The view is going away; nothing reaches it any more.
    static void forgetField(const NSObject& delegate);

    void controlTextDidChange(NSObject notification);
    bool doCommand(NSObject control, NSObject textView, Selector command);

    ui::TextField* field;    // null once it is gone
    objc::RawObject native;  // that the delegate belongs to, which it does not outlive while `field` is there
};

}  // namespace morvel::mac
