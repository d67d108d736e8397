// Which view stands for which kind of control.
#include "Platform/Mac/UI/Form/FormControlView.h"

#include <cmath>

#include "Platform/Mac/UI/Form/FormButtons.h"
#include "Platform/Mac/UI/Form/ListView.h"
#include "Platform/Mac/UI/Form/ValueControls.h"

namespace morvel::mac {

namespace {

struct Maker {
    const FormContext& context;

    std::unique_ptr<FormControlView> value(ValueControl parts) const {
        return std::make_unique<ValueControlView>(std::move(parts));
    }
    std::unique_ptr<FormControlView> button(const std::string& title, std::function<void()> press) const {
        return std::make_unique<ButtonView>(title, context.lifetime.whileAlive(std::move(press)));
    }

    std::unique_ptr<FormControlView> operator()(const ui::FormToggle& toggle) const {
        return value(switchFor(toggle, context.lifetime));
    }
    std::unique_ptr<FormControlView> operator()(const ui::FormPicker& picker) const {
        return value(popUpFor(picker, context.lifetime));
    }
    std::unique_ptr<FormControlView> operator()(const ui::FormSlider& slider) const {
        return value(sliderFor(slider, context.lifetime));
    }
    std::unique_ptr<FormControlView> operator()(const ui::FormStepper& stepper) const {
        return value(stepperFor(stepper, context.lifetime));
    }
    std::unique_ptr<FormControlView> operator()(const ui::FormColorWell& well) const {
        return value(wellFor(well, context.lifetime));
    }
    std::unique_ptr<FormControlView> operator()(const ui::FormList& list) const {
        return std::make_unique<ListView>(list, context);
    }
    std::unique_ptr<FormControlView> operator()(const ui::FormEntry& entry) const {
        return std::make_unique<EntryView>(entry, context.lifetime);
    }
    std::unique_ptr<FormControlView> operator()(const ui::FormText& text) const {
        return std::make_unique<TextView>(text);
    }
    std::unique_ptr<FormControlView> operator()(const ui::FormLink& link) const {
        return button(link.title, link.open);
    }
    std::unique_ptr<FormControlView> operator()(const ui::FormButton& plain) const {
        return button(plain.title, plain.press);
    }
    std::unique_ptr<FormControlView> operator()(const ui::FormPathButton& path) const {
        return button(path.title, [&path, kept = context] { askForPath(path, kept); });
    }
};

}  // namespace

double heightOf(const NSTextField& label, double width) {
    constexpr double kAnyHeight = 10000;
    return std::ceil(NSControl(label).sizeThatFits({width, kAnyHeight}).height);
}

std::unique_ptr<FormControlView> makeControlView(const ui::FormControl& control, const FormContext& context) {
    return std::visit(Maker{context}, control.kind);
}

}  // namespace morvel::mac
