#include "Platform/Linux/UI/Text/TextEditing.h"

#include <pango/pango.h>

#include <algorithm>
#include <vector>

#include "Platform/Linux/System/GLibPointers.h"

namespace morvel::x11 {

namespace {

/// The places in a text between two characters, where words begin and end, in bytes.
struct Places {
    std::vector<size_t> carets, wordStarts, wordEnds;
};

Places placesOf(const std::string& text) {
    const auto length = static_cast<int>(text.size());
    const auto characters = static_cast<size_t>(g_utf8_strlen(text.data(), length));
    std::vector<PangoLogAttr> attributes(characters + 1);
    pango_get_log_attrs(text.data(), length, -1, pango_language_get_default(), attributes.data(),
                        static_cast<int>(attributes.size()));
    Places places;
    const char* at = text.data();
    for (size_t i = 0; i <= characters; ++i) {
        const auto offset = static_cast<size_t>(at - text.data());
        if (attributes[i].is_cursor_position) places.carets.push_back(offset);
        if (attributes[i].is_word_start) places.wordStarts.push_back(offset);
        if (attributes[i].is_word_end) places.wordEnds.push_back(offset);
        if (i < characters) at = g_utf8_next_char(at);
    }
    return places;
}

size_t lastBefore(const std::vector<size_t>& places, size_t position) {
    const auto found = std::ranges::lower_bound(places, position);
    return found == places.begin() ? 0 : *std::prev(found);
}

size_t firstAfter(const std::vector<size_t>& places, size_t position, size_t end) {
    const auto found = std::ranges::upper_bound(places, position);
    return found == places.end() ? end : *found;
}

std::string typable(std::string_view text) {
    const GText valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    std::string out;
    for (const char* at = valid.get(); *at; at = g_utf8_next_char(at)) {
        const gunichar c = g_utf8_get_char(at);
        if (c == '\n' || c == '\t' || c == 0x2028 || c == 0x2029)
            out += ' ';
        else if (!g_unichar_iscntrl(c))
            out.append(at, static_cast<size_t>(g_utf8_next_char(at) - at));
    }
    return out;
}

/// The front of the text, as far as so many characters.
std::string_view cut(std::string_view text, size_t characters) {
    const char* at = text.data();
    for (size_t i = 0; i < characters && at < text.data() + text.size(); ++i) at = g_utf8_next_char(at);
    return text.substr(0, static_cast<size_t>(at - text.data()));
}

}  // namespace

void TextEditing::setText(std::string_view text) {
    text_ = cut(typable(text), kMaxCharacters);
    caret_ = anchor_ = text_.size();
}

void TextEditing::insert(std::string_view text) {
    const std::string added = typable(text);
    const auto kept = static_cast<size_t>(g_utf8_strlen(text_.data(), static_cast<gssize>(selectionStart())) +
                                          g_utf8_strlen(text_.data() + selectionEnd(), -1));
    replace(selectionStart(), selectionEnd(), cut(added, kMaxCharacters - std::min(kept, kMaxCharacters)));
}

void TextEditing::move(Movement movement, Selection selection) {
    // An arrow with a selection goes to the selection's end on that side.
    if (selection == Selection::Drop && hasSelection()) {
        if (movement == Movement::CharacterBack) return moveTo(selectionStart(), selection);
        if (movement == Movement::CharacterForward) return moveTo(selectionEnd(), selection);
    }
    moveTo(destination(movement), selection);
}

void TextEditing::erase(Movement movement) {
    if (hasSelection()) return replace(selectionStart(), selectionEnd(), {});
    const size_t to = destination(movement);
    replace(std::min(caret_, to), std::max(caret_, to), {});
}

void TextEditing::selectAll() {
    anchor_ = 0;
    caret_ = text_.size();
}

void TextEditing::moveTo(size_t position, Selection selection) {
    caret_ = lastBefore(placesOf(text_).carets, std::min(position, text_.size()) + 1);
    if (selection == Selection::Drop) anchor_ = caret_;
}

void TextEditing::selectWordAt(size_t position) {
    const Places places = placesOf(text_);
    anchor_ = lastBefore(places.wordStarts, position + 1);
    caret_ = firstAfter(places.wordEnds, position, text_.size());
}

size_t TextEditing::destination(Movement movement) const {
    const Places places = placesOf(text_);
    switch (movement) {
        case Movement::CharacterBack:
            return lastBefore(places.carets, caret_);
        case Movement::CharacterForward:
            return firstAfter(places.carets, caret_, text_.size());
        case Movement::WordBack:
            return lastBefore(places.wordStarts, caret_);
        case Movement::WordForward:
            return firstAfter(places.wordEnds, caret_, text_.size());
        case Movement::Start:
            return 0;
        case Movement::End:
            break;
    }
    return text_.size();
}

void TextEditing::replace(size_t start, size_t end, std::string_view by) {
    text_.replace(start, end - start, by);
    caret_ = anchor_ = start + by.size();
}

}  // namespace morvel::x11
