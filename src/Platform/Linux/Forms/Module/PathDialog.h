// Asking for a folder or a file.
#pragma once

#include "Platform/Linux/Forms/Module/Gtk.h"
#include "UI/Form.h"

namespace morvel::x11 {

/// Opens the dialog in front of the window, which waits for it, and returns; the answer comes later. Closing the window
/// ends the dialog without an answer. `button` outlives the window.
void askForPath(const ui::FormPathButton& button, GtkWidget* window);

}  // namespace morvel::x11
