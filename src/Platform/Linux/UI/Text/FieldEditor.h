// Lets a person type into the text field of a window: keys, pointer, clipboard, and what painting needs to know.
#pragma once

#include <memory>
#include <optional>

#include "Platform/Linux/Keyboard/KeyReader.h"
#include "Platform/Linux/UI/Drag/SelectionFetch.h"
#include "Platform/Linux/UI/Text/KeyboardGrab.h"
#include "Platform/Linux/UI/Text/TextEditing.h"
#include "Platform/Linux/UI/ViewWindow.h"
#include "UI/TextField.h"

namespace morvel::x11 {

/// Edits the first text field of the window's tree, whichever that is at the time. It has the keyboard from the moment
/// the window is mapped until its own end. What it tells the field may destroy both. Main thread only.
class FieldEditor final : public KeyboardListener {
public:
    /// Both outlive the editor.
    FieldEditor(ToolkitContext& context, ViewWindow& window);

    void mapped() override;
    void keyPressed(const xcb_key_press_event_t& event) override;
    void pointerPressed(const xcb_button_press_event_t& event, Point<ViewSpace> inRootView) override;
    void pointerMoved(Point<ViewSpace> inRootView) override;
    void pointerReleased() override { isSelecting_ = false; }

private:
    /// Null for none; with the text that is edited brought in line with the field's.
    ui::TextField* field();
    bool movedOrErased(const KeyStroke& stroke);
    void paste();
    size_t positionAt(ui::TextField& field, Point<ViewSpace> inRootView) const;
    /// Shows caret and selection, and tells the field of its text, which may be the end of all.
    void changed();
    void showIn(ui::TextField& field);

    ToolkitContext& context_;
    ViewWindow& window_;
    const std::unique_ptr<KeyReader> keys_;  // null: nothing can be typed
    KeyboardGrab grab_;
    TextEditing editing_;
    const ui::TextField* edited_ = nullptr;  // only compared
    double scrolled_ = 0;                    // how much of the text lies before the field's leading end, in points
    bool isSelecting_ = false;
    struct Press {
        xcb_timestamp_t time;
        int clicks;
    };
    std::optional<Press> lastPress_;
    std::unique_ptr<SelectionFetch> pasting_;
};

}  // namespace morvel::x11
