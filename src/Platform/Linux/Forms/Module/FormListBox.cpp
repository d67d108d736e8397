#include "Platform/Linux/Forms/Module/FormListBox.h"

#include "Platform/Linux/Icons/XImage.h"

namespace morvel::x11 {

namespace {

constexpr int kRowSpacing = 10;
constexpr int kRowMargin = 6;
constexpr int kPictureWidth = 20;  // kept free in rows without one, so that the titles stand below one another

GtkWidget* pictureOf(const ui::ImageRef& image, int scale) {
    if (!image) return gtk_image_new();
    // GTK scales by the surface's own device scale: as many pixels per point as the picture has.
    const auto& picture = static_cast<const XImage&>(*image);
    const Size size = picture.size();
    cairo_surface_t* scaled =
        cairo_surface_create_similar_image(picture.surface(), CAIRO_FORMAT_ARGB32, static_cast<int>(size.width) * scale,
                                           static_cast<int>(size.height) * scale);
    cairo_t* cr = cairo_create(scaled);
    cairo_scale(cr, size.width * scale / picture.pixelWidth(), size.height * scale / picture.pixelHeight());
    cairo_set_source_surface(cr, picture.surface(), 0, 0);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_set_device_scale(scaled, scale, scale);
    GtkWidget* widget = gtk_image_new_from_surface(scaled);
    cairo_surface_destroy(scaled);
    return widget;
}

GtkWidget* placeholder(const std::string& text) {
    GtkWidget* label = wrappingLabel(text);
    addClass(label, GTK_STYLE_CLASS_DIM_LABEL);
    g_object_set(label, "margin", 2 * kRowMargin, nullptr);
    return label;
}

}  // namespace

FormListBox::FormListBox(const ui::FormList& list)
    : list_(list), frame_(gtk_frame_new(nullptr)), rows_(gtk_list_box_new()) {
    gtk_list_box_set_selection_mode(GTK_LIST_BOX(rows_), GTK_SELECTION_NONE);
    gtk_container_add(GTK_CONTAINER(frame_), rows_);
}

void FormListBox::refresh() {
    std::vector<ui::FormListRow> rows = list_.rows();
    if (shown_ == rows) return;
    gtk_container_foreach(
        GTK_CONTAINER(rows_), [](GtkWidget* row, gpointer) { gtk_widget_destroy(row); }, nullptr);
    for (const ui::FormListRow& row : rows) gtk_container_add(GTK_CONTAINER(rows_), makeRow(row));
    if (rows.empty()) gtk_container_add(GTK_CONTAINER(rows_), placeholder(list_.emptyText));
    // Only the row's contents take the keyboard's focus, not the row as well.
    gtk_container_foreach(
        GTK_CONTAINER(rows_),
        [](GtkWidget* row, gpointer) {
            gtk_widget_set_can_focus(row, FALSE);
            gtk_list_box_row_set_activatable(GTK_LIST_BOX_ROW(row), FALSE);
        },
        nullptr);
    gtk_widget_show_all(rows_);
    shown_ = std::move(rows);
}

GtkWidget* FormListBox::makeRow(const ui::FormListRow& row) const {
    GtkWidget* line = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, kRowSpacing);
    g_object_set(line, "margin", kRowMargin, nullptr);
    GtkWidget* picture = pictureOf(row.image, gtk_widget_get_scale_factor(frame_));
    gtk_widget_set_size_request(picture, kPictureWidth, -1);
    gtk_box_pack_start(GTK_BOX(line), picture, FALSE, FALSE, 0);
    GtkWidget* title = gtk_label_new(validText(row.title).c_str());
    gtk_label_set_ellipsize(GTK_LABEL(title), PANGO_ELLIPSIZE_MIDDLE);
    gtk_label_set_single_line_mode(GTK_LABEL(title), TRUE);
    gtk_label_set_xalign(GTK_LABEL(title), 0);
    gtk_widget_set_tooltip_text(title, validText(row.detail).c_str());
    gtk_box_pack_start(GTK_BOX(line), title, TRUE, TRUE, 0);
    GtkWidget* button = gtk_button_new_with_label(list_.buttonTitle.c_str());
    speakAs(button, list_.buttonTitle + " " + row.title);
    onSignal(button, "clicked", [&list = list_, id = row.id] { list.press(id); });
    gtk_box_pack_start(GTK_BOX(line), button, FALSE, FALSE, 0);
    return line;
}

}  // namespace morvel::x11
