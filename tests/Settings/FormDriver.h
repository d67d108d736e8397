// A form window as a person uses it: finds controls by what is written on them and operates those that can be.
#pragma once

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "UI/Form.h"
#include "UI/FormSearch.h"

namespace morvel {

class FormDriver {
public:
    /// The form outlives the driver.
    explicit FormDriver(const ui::Form& form) : form_(form) {}

    /// Calls `visit` with each control, shown or not, in order.
    template <class Visit>
    void forEach(const Visit& visit) const {
        for (const ui::FormTab& tab : form_.tabs)
            for (const ui::FormSection& section : tab.sections)
                for (const ui::FormControl& control : section.controls) visit(control, section);
    }
    const ui::FormControl* find(const std::string& name) const {
        const ui::FormControl* found = nullptr;
        forEach([&](const ui::FormControl& control, const ui::FormSection&) {
            if (nameOf(control) == name) found = &control;
        });
        return found;
    }
    bool isShown(const std::string& name) const {
        const ui::FormControl* control = find(name);
        return control && (!control->isVisible || control->isVisible());
    }
    /// The control's kind, ready to be used; throws when a person could not.
    template <class Kind>
    const Kind& at(const std::string& name) const {
        const ui::FormControl* control = find(name);
        if (!control || !isShown(name) || !ui::isEnabled(*control)) throw std::runtime_error("cannot use: " + name);
        return std::get<Kind>(control->kind);
    }
    /// The list below this heading, and the field to add to it.
    template <class Kind>
    const Kind& below(const std::string& heading) const {
        const Kind* found = nullptr;
        forEach([&](const ui::FormControl& control, const ui::FormSection& section) {
            if (section.heading == heading && std::holds_alternative<Kind>(control.kind))
                found = &std::get<Kind>(control.kind);
        });
        if (!found) throw std::runtime_error("nothing of the kind below " + heading);
        return *found;
    }
    /// Whether a line of text that is shown has the part.
    bool says(const std::string& part) const {
        bool found = false;
        forEach([&](const ui::FormControl& control, const ui::FormSection&) {
            const auto* text = std::get_if<ui::FormText>(&control.kind);
            const bool isSeen = text && (!control.isVisible || control.isVisible());
            found = found || (isSeen && text->text().find(part) != std::string::npos);
        });
        return found;
    }

    static std::string nameOf(const ui::FormControl& control) {
        if (!control.label.empty()) return control.label;
        if (const auto* button = std::get_if<ui::FormButton>(&control.kind)) return button->title;
        if (const auto* button = std::get_if<ui::FormPathButton>(&control.kind)) return button->title;
        if (const auto* link = std::get_if<ui::FormLink>(&control.kind)) return link->title;
        return {};
    }

private:
    const ui::Form& form_;
};

}  // namespace morvel
