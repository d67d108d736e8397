// A line of text with a caret and a selection, and what editing does to them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace morvel::x11 {

/// Where the caret goes, or up to where text is erased. A character is what a person takes for one: an accent goes with
/// its letter.
enum class Movement { CharacterBack, CharacterForward, WordBack, WordForward, Start, End };
enum class Selection { Drop, Extend };

/// Positions are in bytes, always between two characters.
class TextEditing {
public:
    /// Longer text is cut; nobody searches for more.
    static constexpr size_t kMaxCharacters = 256;

    const std::string& text() const { return text_; }
    size_t caret() const { return caret_; }
    size_t selectionStart() const { return caret_ < anchor_ ? caret_ : anchor_; }
    size_t selectionEnd() const { return caret_ < anchor_ ? anchor_ : caret_; }
    bool hasSelection() const { return caret_ != anchor_; }

    /// The caret goes to the end.
    void setText(std::string_view text);
    /// Takes the selection's place. Line breaks and tabs become spaces, other control characters are left out, and what
    /// is not UTF-8 becomes replacement characters.
    void insert(std::string_view text);
    void move(Movement movement, Selection selection);
    /// Erases the selection, or without one what lies between the caret and where the movement leads.
    void erase(Movement movement);
    void selectAll();
    /// To the nearest place at or before `position`.
    void moveTo(size_t position, Selection selection);
    void selectWordAt(size_t position);

private:
    size_t destination(Movement movement) const;
    void replace(size_t start, size_t end, std::string_view by);

    std::string text_;
    size_t caret_ = 0;
    size_t anchor_ = 0;  // the selection's other end
};

}  // namespace morvel::x11
