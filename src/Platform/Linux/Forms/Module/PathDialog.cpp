#include "Platform/Linux/Forms/Module/PathDialog.h"

namespace morvel::x11 {

namespace {

GtkFileChooserAction actionOf(ui::PathKind kind) {
    switch (kind) {
        case ui::PathKind::Folder:
            break;
        case ui::PathKind::ExistingFile:
            return GTK_FILE_CHOOSER_ACTION_OPEN;
        case ui::PathKind::NewFile:
            return GTK_FILE_CHOOSER_ACTION_SAVE;
    }
    return GTK_FILE_CHOOSER_ACTION_SELECT_FOLDER;
}

void answered(GtkDialog* dialog, gint response, gpointer data) {
    const auto& button = *static_cast<const ui::FormPathButton*>(data);
    char* path = response == GTK_RESPONSE_ACCEPT ? gtk_file_chooser_get_filename(GTK_FILE_CHOOSER(dialog)) : nullptr;
    gtk_widget_destroy(GTK_WIDGET(dialog));
    if (path) button.chosen(path);
    g_free(path);
}

}  // namespace

void askForPath(const ui::FormPathButton& button, GtkWidget* window) {
    const bool isNew = button.kind == ui::PathKind::NewFile;
    GtkWidget* dialog =
        gtk_file_chooser_dialog_new(button.dialogTitle.c_str(), GTK_WINDOW(window), actionOf(button.kind), "_Cancel",
                                    GTK_RESPONSE_CANCEL, isNew ? "_Save" : "_Open", GTK_RESPONSE_ACCEPT, nullptr);
    gtk_dialog_set_default_response(GTK_DIALOG(dialog), GTK_RESPONSE_ACCEPT);
    gtk_window_set_modal(GTK_WINDOW(dialog), TRUE);
    gtk_window_set_destroy_with_parent(GTK_WINDOW(dialog), TRUE);
    gtk_file_chooser_set_current_folder(GTK_FILE_CHOOSER(dialog), g_get_home_dir());
    if (isNew) {
        gtk_file_chooser_set_do_overwrite_confirmation(GTK_FILE_CHOOSER(dialog), TRUE);
        gtk_file_chooser_set_current_name(GTK_FILE_CHOOSER(dialog), button.suggestedName.c_str());
    }
    g_signal_connect(dialog, "response", G_CALLBACK(answered), const_cast<ui::FormPathButton*>(&button));
    gtk_widget_show(dialog);
}

}  // namespace morvel::x11
