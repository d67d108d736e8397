// Which controls of a form are shown: those that are visible at present and that the search finds.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "UI/Form.h"

namespace morvel::ui {

/// By tab, section and control, each by its place in the form.
class ShownControls {
public:
    using Section = std::vector<bool>;
    using Tab = std::vector<Section>;

    explicit ShownControls(std::vector<Tab> tabs) : tabs_(std::move(tabs)) {}

    bool isShown(size_t tab, size_t section, size_t control) const { return tabs_[tab][section][control]; }
    bool hasAny(size_t tab, size_t section) const;
    bool hasAny(size_t tab) const;
    /// Whether there is no control in any tab.
    bool isEmpty() const;
    /// `current` unless it has nothing to show and another one has: then the first of those.
    size_t tabToShow(size_t current) const;

private:
    std::vector<Tab> tabs_;
};

/// Each word of `query` is looked for in the control's label, help text and section heading, without regard to the
/// case of ASCII letters. No words find everything.
ShownControls shownControls(const Form& form, std::string_view query);

/// Asks `isEnabled`.
bool isEnabled(const FormControl& control);

}  // namespace morvel::ui
