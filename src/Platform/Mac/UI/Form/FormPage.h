// One tab of a form: its sections one below the other, in a view that scrolls when they are longer than the window.
#pragma once

#include <memory>
#include <vector>

#include "Platform/Mac/UI/Form/FormControlView.h"
#include "UI/FormSearch.h"

namespace morvel::mac {

class FormPage {
public:
    /// The tab, the lifetime and the window outlive the page.
    FormPage(const ui::FormTab& tab, CGRect frame, const NSWindow& window, const Lifetime& lifetime);

    /// To be put into the window.
    NSView view() const { return scroll_; }
    /// Shows the values anew and lays out what is shown. `index` is the tab's place among the shown controls'.
    void refresh(const ui::ShownControls& shown, size_t index);

private:
    struct Row {
        const ui::FormControl& control;
        std::unique_ptr<FormControlView> active;
        NSTextField label;  // empty for none
        NSTextField help;   // empty for none
    };
    struct Section {
        NSTextField heading;
        std::vector<Row> rows;
    };

    Row makeRow(const ui::FormControl& control, const FormContext& context) const;
    /// Puts the row at this height and returns where the next thing goes.
    double place(const Row& row, double top) const;

    NSScrollView scroll_;
    NSView page_;
    double width_;
    std::vector<Section> sections_;
};

}  // namespace morvel::mac
