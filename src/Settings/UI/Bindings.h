// Controls bound to settings.
#pragma once

#include <cmath>
#include <string>
#include <utility>

#include "Settings/Setting.h"
#include "Settings/SettingsEnums.h"
#include "UI/Form.h"

namespace morvel::bindings {

// The settings outlive the controls.

inline ui::FormControl toggle(std::string label, Setting<bool>& setting, std::string help = {}) {
    return {std::move(label), std::move(help),
            ui::FormToggle{[&setting] { return setting.value(); }, [&setting](bool on) { setting.set(on); }}};
}

/// A title for each case of the enumeration, in its order.
template <class E, size_t kCount>
ui::FormControl picker(std::string label, Setting<E>& setting, const char* const (&titles)[kCount],
                       std::string help = {}) {
    static_assert(kCount == kRawStrings<E>.size(), "a case without a title, or a title without a case");
    const auto selected = [&setting] { return static_cast<size_t>(setting.value()); };
    const auto select = [&setting](size_t index) {
        if (index < kCount) setting.set(static_cast<E>(index));
    };
    return {std::move(label), std::move(help), ui::FormPicker{{titles, titles + kCount}, selected, select}};
}

/// In whole points.
inline ui::FormControl slider(std::string label, Setting<double>& setting, double least, double greatest,
                              std::string help = {}) {
    return {std::move(label), std::move(help),
            ui::FormSlider{least, greatest, [&setting] { return setting.value(); },
                           [&setting](double value) { setting.set(std::round(value)); }}};
}

inline ui::FormControl stepper(std::string label, Setting<int>& setting, int least, int greatest,
                               std::string help = {}) {
    return {std::move(label), std::move(help),
            ui::FormStepper{least, greatest, [&setting] { return setting.value(); },
                            [&setting](int value) { setting.set(value); }}};
}

inline ui::FormControl visibleWhen(std::function<bool()> isVisible, ui::FormControl control) {
    control.isVisible = std::move(isVisible);
    return control;
}

inline ui::FormControl enabledWhen(std::function<bool()> isEnabled, ui::FormControl control) {
    control.isEnabled = std::move(isEnabled);
    return control;
}

}  // namespace morvel::bindings
