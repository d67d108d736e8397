// Controls with one value, which stand at the right end of their row.
#pragma once

#include "Platform/Mac/UI/Form/FormControlView.h"

namespace morvel::mac {

/// What such a control consists of.
struct ValueControl {
    NSControl control;
    CGSize size;
    NSTextField number;  ///< says the value, to the right of the control; empty for none
    std::function<void()> show;
};

// What is bound to outlives the control's use; its action ends with the lifetime.
ValueControl switchFor(const ui::FormToggle& toggle, const Lifetime& lifetime);
ValueControl popUpFor(const ui::FormPicker& picker, const Lifetime& lifetime);
ValueControl sliderFor(const ui::FormSlider& slider, const Lifetime& lifetime);
ValueControl stepperFor(const ui::FormStepper& stepper, const Lifetime& lifetime);
ValueControl wellFor(const ui::FormColorWell& well, const Lifetime& lifetime);

class ValueControlView : public FormControlView {
public:
    explicit ValueControlView(ValueControl parts) : parts_(std::move(parts)) {}

    void refresh() override { parts_.show(); }
    std::vector<NSView> views() const override;
    double place(CGPoint topLeft, double width) override;
    void setEnabled(bool enabled) override { parts_.control.setEnabled(enabled); }
    void setAccessibilityLabel(const NSString& text) override { parts_.control.setAccessibilityLabel(text); }

private:
    ValueControl parts_;
};

}  // namespace morvel::mac
