// One line of text that a person can edit. Where text is typed, and how it is edited, is the host's.
#pragma once

#include <functional>
#include <string>

#include "UI/Font.h"
#include "UI/View.h"

namespace morvel::ui {

/// Keys that mean something to the list that belongs to a field rather than to its text.
enum class TextCommand { MoveUp, MoveDown, PageUp, PageDown, Confirm, Cancel };

/// The first text field of a popover that takes the keyboard is the one that is typed into.
class TextField : public View {
public:
    static constexpr double kHeight = 22;  ///< of a rounded-border field at its font
    static constexpr double kPadding = 7;  ///< points between the border and the text, at either end
    static constexpr double kRadius = 5;

    explicit TextField(std::string placeholder) : placeholder_(std::move(placeholder)) {
        setAccessibilityLabel(placeholder_);
    }

    Kind kind() const override { return Kind::TextField; }

    /// UTF-8, without line breaks.
    const std::string& text() const { return text_; }
    /// By the program: `onChange` is not called.
    void setText(std::string text);
    /// Shown dimly while there is no text.
    const std::string& placeholder() const { return placeholder_; }
    const Font& font() const { return font_; }

    /// The person changed the text.
    std::function<void()> onChange;
    /// Whether the command was used; one that is not is left to the host, which may do nothing with it.
    std::function<bool(TextCommand)> onCommand;

    Size intrinsicSize() const override { return {0, kHeight}; }  // as wide as there is room
    bool acceptsMouse() const override { return true; }

    // --- For hosts. The handlers may destroy the field. ---
    void edited(std::string text);
    bool commanded(TextCommand command);

private:
    std::string placeholder_;
    std::string text_;
    Font font_{.size = 13};
};

/// The field that is typed into when the tree of `root` takes the keyboard; null for none.
TextField* firstTextField(View& root);

}  // namespace morvel::ui
