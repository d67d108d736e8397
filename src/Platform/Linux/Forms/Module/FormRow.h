// One control of a form as widgets: its label, the control itself, and its help text below.
#pragma once

#include <functional>

#include "Platform/Linux/Forms/Module/Gtk.h"
#include "UI/Form.h"

namespace morvel::x11 {

/// The widgets belong to the window that they are put in, which goes before the row.
class FormRow {
public:
    /// The control outlives the row.
    explicit FormRow(const ui::FormControl& control);
    FormRow(const FormRow&) = delete;
    FormRow& operator=(const FormRow&) = delete;

    /// All of it, to be put in a container.
    GtkWidget* widget() const { return whole_; }
    /// Shows the control's present value and whether it can be used.
    void refresh();

private:
    /// Makes the widget that a person operates, and what brings it up to date.
    GtkWidget* make(const ui::FormToggle& toggle);
    GtkWidget* make(const ui::FormPicker& picker);
    GtkWidget* make(const ui::FormSlider& slider);
    GtkWidget* make(const ui::FormStepper& stepper);
    GtkWidget* make(const ui::FormColorWell& well);
    GtkWidget* make(const ui::FormList& list);
    GtkWidget* make(const ui::FormEntry& entry);
    GtkWidget* make(const ui::FormText& text);
    GtkWidget* make(const ui::FormLink& link);
    GtkWidget* make(const ui::FormButton& button);
    GtkWidget* make(const ui::FormPathButton& button);
    /// Calls `changed` on the signal, but not for what `refresh` does.
    void onChange(GtkWidget* widget, const char* signal, std::function<void()> changed);

    const ui::FormControl& control_;
    GtkWidget* whole_;
    GtkWidget* active_;
    std::function<void()> show_;  // the present value; may be empty
    bool isShowing_ = false;
};

}  // namespace morvel::x11
