// One control of a form as AppKit's, whatever its kind.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "Platform/Mac/apple/AppKit/NSFormControls.h"
#include "UI/Form.h"
#include "Util/Lifetime.h"

namespace morvel::mac {

/// Belongs to a row, whose page has flipped coordinates.
class FormControlView {
public:
    virtual ~FormControlView() = default;
    /// Shows the present value.
    virtual void refresh() = 0;
    /// The views that make it up; others after a refresh than before, perhaps.
    virtual std::vector<NSView> views() const = 0;
    /// Puts the views into the part of the page from `top` down and returns the height that they take.
    virtual double place(CGPoint topLeft, double width) = 0;
    virtual void setEnabled(bool enabled) = 0;
    virtual void setAccessibilityLabel(const NSString&) {}
};

/// How high a wrapping label is at this width.
double heightOf(const NSTextField& label, double width);

/// Where views are put and which life their actions share: none acts once that has ended. All outlive the views'
/// makers. They are not kept here: a button's action that kept the window that it stands in would keep it forever.
struct FormContext {
    const NSView& page;
    const NSWindow& window;
    const Lifetime& lifetime;
};

/// The control outlives the view.
std::unique_ptr<FormControlView> makeControlView(const ui::FormControl& control, const FormContext& context);

}  // namespace morvel::mac
