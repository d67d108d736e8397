// A list of a form: a row per item with its picture, its title and a button, or a text when there are none.
#pragma once

#include <optional>
#include <vector>

#include "Platform/Linux/Forms/Module/Gtk.h"
#include "UI/Form.h"

namespace morvel::x11 {

class FormListBox {
public:
    /// The list outlives it. The widget belongs to the container that it is put in.
    explicit FormListBox(const ui::FormList& list);

    GtkWidget* widget() const { return frame_; }
    /// Makes the rows anew if they are others than before.
    void refresh();

private:
    GtkWidget* makeRow(const ui::FormListRow& row) const;

    const ui::FormList& list_;
    GtkWidget* frame_;
    GtkWidget* rows_;
    std::optional<std::vector<ui::FormListRow>> shown_;
};

}  // namespace morvel::x11
