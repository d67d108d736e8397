#include "Platform/Linux/Forms/Module/FormWindow.h"

#include <gdk/gdkx.h>

#include "UI/FormSearch.h"

namespace morvel::x11 {

namespace {

constexpr int kPageMargin = 24;
constexpr int kSectionSpacing = 22;
constexpr int kRowSpacing = 12;
constexpr int kHeaderMargin = 12;
constexpr int kSearchCharacters = 18;

/// Control-F leads to the search field, Control-W closes the window.
gboolean keyPressed(GtkWidget* window, GdkEventKey* event, gpointer search) {
    if ((event->state & gtk_accelerator_get_default_mod_mask()) != GDK_CONTROL_MASK) return FALSE;
    if (event->keyval == GDK_KEY_f) gtk_widget_grab_focus(GTK_WIDGET(search));
    if (event->keyval == GDK_KEY_w) gtk_window_close(GTK_WINDOW(window));
    return event->keyval == GDK_KEY_f || event->keyval == GDK_KEY_w;
}

}  // namespace

FormWindow::FormWindow(ui::Form form)
    : form_(std::move(form)),
      window_(gtk_window_new(GTK_WINDOW_TOPLEVEL)),
      stack_(gtk_stack_new()),
      search_(gtk_search_entry_new()),
      nothingFound_(gtk_label_new(form_.nothingFound.c_str())) {
    gtk_window_set_title(GTK_WINDOW(window_), form_.title.c_str());
    gtk_window_set_default_size(GTK_WINDOW(window_), static_cast<int>(form_.contentSize.width),
                                static_cast<int>(form_.contentSize.height));
    gtk_window_set_position(GTK_WINDOW(window_), GTK_WIN_POS_CENTER);
    GtkWidget* content = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
    gtk_box_pack_start(GTK_BOX(content), makeHeader(), FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(content), gtk_separator_new(GTK_ORIENTATION_HORIZONTAL), FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(content), stack_, TRUE, TRUE, 0);
    gtk_box_pack_start(GTK_BOX(content), nothingFound_, TRUE, TRUE, 0);
    gtk_container_add(GTK_CONTAINER(window_), content);
    for (const ui::FormTab& tab : form_.tabs) {
        pages_.push_back(makePage(tab));
        gtk_stack_add_titled(GTK_STACK(stack_), pages_.back().whole, tab.identifier.c_str(), tab.title.c_str());
    }
    gtk_widget_show_all(content);
    onSignal(search_, "search-changed", [this] { refresh(); });
    onSignal(search_, "stop-search", [this] { gtk_entry_set_text(GTK_ENTRY(search_), ""); });
    g_signal_connect(window_, "key-press-event", G_CALLBACK(keyPressed), search_);
    g_signal_connect(window_, "delete-event", G_CALLBACK(gtk_widget_hide_on_delete), nullptr);
    refresh();
}

FormWindow::~FormWindow() {
    gtk_widget_destroy(window_);
}

void FormWindow::bringToFront() {
    gtk_widget_realize(window_);
    // The person has just asked for it, by another window of the program: without a time, window managers take it for
    // one that wants to steal the focus.
    gtk_window_present_with_time(GTK_WINDOW(window_), gdk_x11_get_server_time(gtk_widget_get_window(window_)));
}

void FormWindow::refresh() {
    const ui::ShownControls shown = ui::shownControls(form_, gtk_entry_get_text(GTK_ENTRY(search_)));
    const size_t tab = shown.tabToShow(currentTab());
    for (size_t page = 0; page < pages_.size(); ++page) {
        for (size_t section = 0; section < pages_[page].sections.size(); ++section) {
            const Section& part = pages_[page].sections[section];
            for (size_t row = 0; row < part.rows.size(); ++row) {
                part.rows[row]->refresh();
                gtk_widget_set_visible(part.rows[row]->widget(), shown.isShown(page, section, row));
            }
            gtk_widget_set_visible(part.whole, shown.hasAny(page, section));
        }
        // A tab without a page to show has no button either.
        gtk_widget_set_visible(pages_[page].whole, shown.hasAny(page));
    }
    if (tab < pages_.size()) gtk_stack_set_visible_child(GTK_STACK(stack_), pages_[tab].whole);
    gtk_widget_set_visible(stack_, !shown.isEmpty());
    gtk_widget_set_visible(nothingFound_, shown.isEmpty());
}

GtkWidget* FormWindow::makeHeader() {
    GtkWidget* header = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, kHeaderMargin);
    g_object_set(header, "margin", kHeaderMargin, nullptr);
    GtkWidget* switcher = gtk_stack_switcher_new();
    gtk_stack_switcher_set_stack(GTK_STACK_SWITCHER(switcher), GTK_STACK(stack_));
    addClass(switcher, "morvel-tabs");
    gtk_entry_set_placeholder_text(GTK_ENTRY(search_), form_.searchPlaceholder.c_str());
    gtk_entry_set_width_chars(GTK_ENTRY(search_), kSearchCharacters);
    gtk_box_pack_start(GTK_BOX(header), switcher, FALSE, FALSE, 0);
    gtk_box_pack_end(GTK_BOX(header), search_, FALSE, FALSE, 0);
    return header;
}

FormWindow::Page FormWindow::makePage(const ui::FormTab& tab) {
    Page page{gtk_scrolled_window_new(nullptr, nullptr), {}};
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(page.whole), GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
    GtkWidget* column = gtk_box_new(GTK_ORIENTATION_VERTICAL, kSectionSpacing);
    g_object_set(column, "margin", kPageMargin, nullptr);
    for (const ui::FormSection& section : tab.sections) {
        page.sections.push_back(makeSection(section));
        gtk_box_pack_start(GTK_BOX(column), page.sections.back().whole, FALSE, FALSE, 0);
    }
    gtk_container_add(GTK_CONTAINER(page.whole), column);
    // What gets the keyboard's focus is scrolled into view.
    gtk_container_set_focus_vadjustment(GTK_CONTAINER(column),
                                        gtk_scrolled_window_get_vadjustment(GTK_SCROLLED_WINDOW(page.whole)));
    return page;
}

FormWindow::Section FormWindow::makeSection(const ui::FormSection& section) {
    Section made{gtk_box_new(GTK_ORIENTATION_VERTICAL, kRowSpacing), {}};
    GtkWidget* heading = gtk_label_new(section.heading.c_str());
    gtk_label_set_xalign(GTK_LABEL(heading), 0);
    addClass(heading, "morvel-heading");
    gtk_box_pack_start(GTK_BOX(made.whole), heading, FALSE, FALSE, 0);
    for (const ui::FormControl& control : section.controls) {
        made.rows.push_back(std::make_unique<FormRow>(control));
        gtk_box_pack_start(GTK_BOX(made.whole), made.rows.back()->widget(), FALSE, FALSE, 0);
    }
    return made;
}

size_t FormWindow::currentTab() const {
    const GtkWidget* visible = gtk_stack_get_visible_child(GTK_STACK(stack_));
    for (size_t page = 0; page < pages_.size(); ++page)
        if (pages_[page].whole == visible) return page;
    return 0;
}

}  // namespace morvel::x11
