// What painting keeps for one view while it is shown: where it was seen last, and its shaped text.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Platform/Linux/UI/PixelRect.h"
#include "Platform/Linux/UI/TextLayouts.h"
#include "UI/Label.h"

namespace morvel::x11 {

/// Where a text field is edited, in bytes of its text, and how much of the text lies before its leading end.
struct TextCaret {
    size_t position = 0;
    size_t selectionStart = 0, selectionEnd = 0;
    double scrolled = 0;
};

class ViewNode : public ui::ViewPeer {
public:
    /// The part of the window in which the view was shown by the last frame; nothing when it was not to be seen.
    std::optional<PixelRect> shownIn;

    /// Of a text field that has the keyboard.
    std::optional<TextCaret> caret;

    /// The label's text shaped for a width; shaped again only when text, font or width are others than last time.
    PangoLayout* layout(TextLayouts& layouts, const ui::Label& label, double width);
    /// Text on one line, uncut; shaped again only when it or the font are others than last time.
    PangoLayout* layout(TextLayouts& layouts, const std::string& text, const ui::Font& font) {
        return layout(layouts, text, font, -1);
    }

private:
    PangoLayout* layout(TextLayouts& layouts, std::string_view text, const ui::Font& font, double width);

    LayoutPtr layout_;
    std::string text_;  // as far as it can be shown
    ui::Font font_;
    double width_ = 0;
};

/// The node that this host gave the view when it joined a window; null for a view that is not shown.
inline ViewNode* nodeOf(const ui::View& view) {
    return static_cast<ViewNode*>(view.peer());
}

}  // namespace morvel::x11
