// One line of text, cut at its tail with an ellipsis where it does not fit.
#pragma once

#include <optional>
#include <string>

#include "UI/Font.h"
#include "UI/Toolkit.h"
#include "UI/View.h"

namespace morvel::ui {

enum class TextAlignment { Leading, Center };

class Label : public View {
public:
    explicit Label(Toolkit& toolkit, Font font = {}, TextAlignment alignment = TextAlignment::Leading)
        : toolkit_(toolkit), font_(font), alignment_(alignment) {}

    Kind kind() const override { return Kind::Label; }

    /// UTF-8; a host shows what is not as replacement characters and a line break as a space.
    const std::string& text() const { return text_; }
    void setText(std::string text);
    const Font& font() const { return font_; }
    TextAlignment alignment() const { return alignment_; }
    const Color& color() const { return color_; }
    void setColor(const Color& color);

    /// The text's own size, uncut.
    Size intrinsicSize() const override;

private:
    Toolkit& toolkit_;
    Font font_;
    TextAlignment alignment_;
    std::string text_;
    Color color_ = kLabelColor;
    mutable std::optional<Size> measured_;  // of `text_`; measuring shapes the text and is not cheap
};

}  // namespace morvel::ui
