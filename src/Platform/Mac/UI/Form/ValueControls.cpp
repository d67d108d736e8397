// Controls that stand at the right end of their row: switches, menus, sliders, steppers and colour wells.
#include "Platform/Mac/UI/Form/ValueControls.h"

#include <cmath>

#include "Platform/Mac/UI/ControlAction.h"
#include "Platform/Mac/UI/Resolving.h"

namespace morvel::mac {

namespace {

constexpr CGSize kSwitchSize{40, 24};
constexpr CGSize kPickerSize{230, 26};
constexpr CGSize kSliderSize{200, 24};
constexpr CGSize kStepperSize{19, 28};
constexpr CGSize kWellSize{48, 26};
constexpr CGSize kNumberSize{40, 18};
constexpr double kGap = 8;

NSTextField numberLabel() {
    const NSTextField label = NSTextField::label(NSString::from({}));
    label.setTextColor(NSColor::secondaryLabel());
    return label;
}

/// As a whole number.
void showNumber(const NSTextField& label, double value) {
    label.setStringValue(NSString::from(std::to_string(std::llround(value))));
}

}  // namespace

ValueControl switchFor(const ui::FormToggle& toggle, const Lifetime& lifetime) {
    const NSSwitch control = NSSwitch::make();
    setAction(control, lifetime.whileAlive([&toggle, raw = control.raw()] {
        toggle.set(NSSwitch(raw).state() == NSControlStateValueOn);
    }));
    return {control, kSwitchSize, {}, [control, &toggle] {
                control.setState(toggle.isOn() ? NSControlStateValueOn : NSControlStateValueOff);
            }};
}

ValueControl popUpFor(const ui::FormPicker& picker, const Lifetime& lifetime) {
    const NSPopUpButton control = NSPopUpButton::make();
    for (const std::string& title : picker.titles) control.addItem(NSString::from(title));
    setAction(control, lifetime.whileAlive([&picker, raw = control.raw()] {
        const NSInteger index = NSPopUpButton(raw).selected();
        if (index >= 0) picker.select(static_cast<size_t>(index));
    }));
    return {
        control, kPickerSize, {}, [control, &picker] { control.select(static_cast<NSInteger>(picker.selected())); }};
}

ValueControl sliderFor(const ui::FormSlider& slider, const Lifetime& lifetime) {
    const NSSlider control = NSSlider::make(slider.value(), slider.least, slider.greatest, nullptr, Selector());
    const NSTextField number = numberLabel();
    setAction(control,
              lifetime.whileAlive([&slider, raw = control.raw()] { slider.set(NSSlider(raw).doubleValue()); }));
    return {control, kSliderSize, number, [control, number, &slider] {
                control.setDoubleValue(slider.value());
                showNumber(number, slider.value());
            }};
}

ValueControl stepperFor(const ui::FormStepper& stepper, const Lifetime& lifetime) {
    const NSStepper control = NSStepper::make();
    control.setMinValue(stepper.least);
    control.setMaxValue(stepper.greatest);
    control.setIncrement(1);
    control.setValueWraps(false);
    const NSTextField number = numberLabel();
    setAction(control, lifetime.whileAlive([&stepper, raw = control.raw()] {
        stepper.set(static_cast<int>(std::lround(NSStepper(raw).doubleValue())));
    }));
    return {control, kStepperSize, number, [control, number, &stepper] {
                control.setDoubleValue(stepper.value());
                showNumber(number, stepper.value());
            }};
}

ValueControl wellFor(const ui::FormColorWell& well, const Lifetime& lifetime) {
    const NSColorWell control = NSColorWell::make();
    setAction(control, lifetime.whileAlive([&well, raw = control.raw()] {
        const auto chosen = NSComponentColor::of(NSColorWell(raw).color(), NSColorSpace::sRGB());
        if (chosen) well.set({chosen.red(), chosen.green(), chosen.blue(), chosen.alpha()});
    }));
    return {control, kWellSize, {}, [control, &well] { control.setColor(nsColor(ui::customColor(well.color()))); }};
}

std::vector<NSView> ValueControlView::views() const {
    std::vector<NSView> views{parts_.control};
    if (parts_.number) views.push_back(parts_.number);
    return views;
}

double ValueControlView::place(CGPoint topLeft, double width) {
    const CGSize size = parts_.size;
    const double height = std::max(size.height, kNumberSize.height);
    double right = topLeft.x + width;
    if (parts_.number) {
        right -= kNumberSize.width;
        parts_.number.setFrame({{right, topLeft.y + (height - kNumberSize.height) / 2}, kNumberSize});
        right -= kGap;
    }
    parts_.control.setFrame({{right - size.width, topLeft.y + (height - size.height) / 2}, size});
    return height;
}

}  // namespace morvel::mac
