// The few words that make GTK's C interface pleasant here.
#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <string>

namespace morvel::x11 {

/// Calls `happened` on the signal as long as the widget lives. For signals whose handlers return nothing.
inline void onSignal(gpointer widget, const char* signal, std::function<void()> happened) {
    using Call = std::function<void()>;
    const auto call = +[](gpointer data) { (*static_cast<Call*>(data))(); };
    const auto end = +[](gpointer data, GClosure*) { delete static_cast<Call*>(data); };
    // Swapped, so that the data comes first and whatever else the signal passes is left unread.
    g_signal_connect_data(widget, signal, G_CALLBACK(call), new Call(std::move(happened)), end, G_CONNECT_SWAPPED);
}

/// Text of other programs as GTK takes it: what is not UTF-8 is replaced.
inline std::string validText(const std::string& text) {
    char* valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
    std::string made(valid);
    g_free(valid);
    return made;
}

inline void addClass(GtkWidget* widget, const char* styleClass) {
    gtk_style_context_add_class(gtk_widget_get_style_context(widget), styleClass);
}

/// What a screen reader says of the widget; empty texts leave it as GTK has it.
inline void speakAs(GtkWidget* widget, const std::string& name, const std::string& description = {}) {
    AtkObject* const accessible = gtk_widget_get_accessible(widget);
    if (!name.empty()) atk_object_set_name(accessible, validText(name).c_str());
    if (!description.empty()) atk_object_set_description(accessible, validText(description).c_str());
}

/// Several lines, as many as the text needs in its width.
inline GtkWidget* wrappingLabel(const std::string& text) {
    GtkWidget* label = gtk_label_new(validText(text).c_str());
    gtk_label_set_line_wrap(GTK_LABEL(label), TRUE);
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    // Otherwise the label would ask for the width of its longest line.
    gtk_label_set_max_width_chars(GTK_LABEL(label), 1);
    gtk_widget_set_hexpand(label, TRUE);
    return label;
}

}  // namespace morvel::x11
