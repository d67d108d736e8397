#include "Platform/Linux/Forms/Module/FormRow.h"

#include <memory>

#include "Platform/Linux/Forms/Module/FormListBox.h"
#include "Platform/Linux/Forms/Module/PathDialog.h"
#include "UI/FormSearch.h"

namespace morvel::x11 {

namespace {

constexpr int kLabelSpacing = 12;
constexpr int kHelpSpacing = 4;
constexpr int kSliderWidth = 260;

/// Turning the wheel over a page scrolls the page and changes nothing that happens to pass under the pointer.
void leaveWheelToPage(GtkWidget* widget) {
    const auto stop = +[](GtkWidget* over, GdkEvent*, gpointer) -> gboolean {
        g_signal_stop_emission_by_name(over, "scroll-event");
        return FALSE;
    };
    g_signal_connect(widget, "scroll-event", G_CALLBACK(stop), nullptr);
}

/// What fills the row's width instead of standing at its right end.
bool isWide(const ui::FormControl& control) {
    return std::holds_alternative<ui::FormList>(control.kind) || std::holds_alternative<ui::FormEntry>(control.kind) ||
           std::holds_alternative<ui::FormText>(control.kind);
}

GdkRGBA gdkColor(const ui::RGBA& color) {
    return {color.red, color.green, color.blue, color.alpha};
}

}  // namespace

FormRow::FormRow(const ui::FormControl& control)
    : control_(control), whole_(gtk_box_new(GTK_ORIENTATION_VERTICAL, kHelpSpacing)) {
    active_ = std::visit([this](const auto& kind) { return make(kind); }, control.kind);
    GtkWidget* line = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, kLabelSpacing);
    if (!control.label.empty()) {
        GtkWidget* label = gtk_label_new(control.label.c_str());
        gtk_label_set_xalign(GTK_LABEL(label), 0);
        gtk_label_set_mnemonic_widget(GTK_LABEL(label), active_);
        gtk_widget_set_hexpand(label, TRUE);
        gtk_box_pack_start(GTK_BOX(line), label, TRUE, TRUE, 0);
    }
    speakAs(active_, control.label, control.help);
    if (!isWide(control)) gtk_widget_set_valign(active_, GTK_ALIGN_CENTER);
    gtk_box_pack_start(GTK_BOX(line), active_, isWide(control), isWide(control), 0);
    gtk_box_pack_start(GTK_BOX(whole_), line, FALSE, FALSE, 0);
    if (!control.help.empty()) {
        GtkWidget* help = wrappingLabel(control.help);
        addClass(help, GTK_STYLE_CLASS_DIM_LABEL);
        addClass(help, "morvel-help");
        gtk_box_pack_start(GTK_BOX(whole_), help, FALSE, FALSE, 0);
    }
    gtk_widget_show_all(whole_);
    // From here on the window decides whether the row is shown.
    gtk_widget_set_no_show_all(whole_, TRUE);
}

void FormRow::refresh() {
    isShowing_ = true;
    if (show_) show_();
    isShowing_ = false;
    gtk_widget_set_sensitive(whole_, ui::isEnabled(control_));
}

void FormRow::onChange(GtkWidget* widget, const char* signal, std::function<void()> changed) {
    onSignal(widget, signal, [this, changed = std::move(changed)] {
        if (!isShowing_) changed();
    });
}

GtkWidget* FormRow::make(const ui::FormToggle& toggle) {
    GtkWidget* widget = gtk_switch_new();
    show_ = [widget, &toggle] { gtk_switch_set_active(GTK_SWITCH(widget), toggle.isOn()); };
    onChange(widget, "notify::active", [widget, &toggle] { toggle.set(gtk_switch_get_active(GTK_SWITCH(widget))); });
    return widget;
}

GtkWidget* FormRow::make(const ui::FormPicker& picker) {
    GtkWidget* widget = gtk_combo_box_text_new();
    for (const std::string& title : picker.titles)
        gtk_combo_box_text_append_text(GTK_COMBO_BOX_TEXT(widget), title.c_str());
    leaveWheelToPage(widget);
    show_ = [widget, &picker] { gtk_combo_box_set_active(GTK_COMBO_BOX(widget), static_cast<int>(picker.selected())); };
    onChange(widget, "changed", [widget, &picker] {
        const int index = gtk_combo_box_get_active(GTK_COMBO_BOX(widget));
        if (index >= 0) picker.select(static_cast<size_t>(index));
    });
    return widget;
}

GtkWidget* FormRow::make(const ui::FormSlider& slider) {
    GtkWidget* widget = gtk_scale_new_with_range(GTK_ORIENTATION_HORIZONTAL, slider.least, slider.greatest, 1);
    gtk_scale_set_digits(GTK_SCALE(widget), 0);
    gtk_scale_set_value_pos(GTK_SCALE(widget), GTK_POS_RIGHT);
    gtk_widget_set_size_request(widget, kSliderWidth, -1);
    leaveWheelToPage(widget);
    show_ = [widget, &slider] { gtk_range_set_value(GTK_RANGE(widget), slider.value()); };
    onChange(widget, "value-changed", [widget, &slider] { slider.set(gtk_range_get_value(GTK_RANGE(widget))); });
    return widget;
}

GtkWidget* FormRow::make(const ui::FormStepper& stepper) {
    GtkWidget* widget = gtk_spin_button_new_with_range(stepper.least, stepper.greatest, 1);
    gtk_spin_button_set_numeric(GTK_SPIN_BUTTON(widget), TRUE);
    leaveWheelToPage(widget);
    show_ = [widget, &stepper] { gtk_spin_button_set_value(GTK_SPIN_BUTTON(widget), stepper.value()); };
    onChange(widget, "value-changed",
             [widget, &stepper] { stepper.set(gtk_spin_button_get_value_as_int(GTK_SPIN_BUTTON(widget))); });
    return widget;
}

GtkWidget* FormRow::make(const ui::FormColorWell& well) {
    GtkWidget* widget = gtk_color_button_new();
    gtk_color_chooser_set_use_alpha(GTK_COLOR_CHOOSER(widget), TRUE);
    gtk_color_button_set_title(GTK_COLOR_BUTTON(widget), control_.label.c_str());
    show_ = [widget, &well] {
        const GdkRGBA color = gdkColor(well.color());
        gtk_color_chooser_set_rgba(GTK_COLOR_CHOOSER(widget), &color);
    };
    onChange(widget, "color-set", [widget, &well] {
        GdkRGBA color;
        gtk_color_chooser_get_rgba(GTK_COLOR_CHOOSER(widget), &color);
        well.set({color.red, color.green, color.blue, color.alpha});
    });
    return widget;
}

GtkWidget* FormRow::make(const ui::FormList& list) {
    auto box = std::make_shared<FormListBox>(list);
    show_ = [box] { box->refresh(); };
    return box->widget();
}

GtkWidget* FormRow::make(const ui::FormEntry& entry) {
    GtkWidget* line = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, kLabelSpacing);
    GtkWidget* field = gtk_entry_new();
    GtkWidget* button = gtk_button_new_with_label(entry.buttonTitle.c_str());
    gtk_entry_set_placeholder_text(GTK_ENTRY(field), entry.placeholder.c_str());
    gtk_box_pack_start(GTK_BOX(line), field, TRUE, TRUE, 0);
    gtk_box_pack_start(GTK_BOX(line), button, FALSE, FALSE, 0);
    const auto handOver = [field, &entry] {
        if (entry.take(gtk_entry_get_text(GTK_ENTRY(field)))) gtk_entry_set_text(GTK_ENTRY(field), "");
    };
    onSignal(field, "activate", handOver);
    onSignal(button, "clicked", handOver);
    return line;
}

GtkWidget* FormRow::make(const ui::FormText& text) {
    GtkWidget* label = wrappingLabel({});
    show_ = [label, &text] { gtk_label_set_text(GTK_LABEL(label), validText(text.text()).c_str()); };
    return label;
}

GtkWidget* FormRow::make(const ui::FormLink& link) {
    GtkWidget* button = gtk_button_new_with_label(link.title.c_str());
    // The theme's own colour for links, which is readable on its light and its dark background.
    gtk_widget_set_state_flags(button, GTK_STATE_FLAG_LINK, FALSE);
    addClass(button, GTK_STYLE_CLASS_FLAT);
    addClass(button, "morvel-link");
    onSignal(button, "clicked", [&link] { link.open(); });
    return button;
}

GtkWidget* FormRow::make(const ui::FormButton& button) {
    GtkWidget* widget = gtk_button_new_with_label(button.title.c_str());
    onSignal(widget, "clicked", [&button] { button.press(); });
    return widget;
}

GtkWidget* FormRow::make(const ui::FormPathButton& button) {
    GtkWidget* widget = gtk_button_new_with_label(button.title.c_str());
    onSignal(widget, "clicked", [widget, &button] { askForPath(button, gtk_widget_get_toplevel(widget)); });
    return widget;
}

}  // namespace morvel::x11
