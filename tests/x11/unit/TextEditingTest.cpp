// Editing a line of text: where the caret goes, what is selected, and what is never in it.
#include "Platform/Linux/UI/Text/TextEditing.h"

#include <gtest/gtest.h>

namespace morvel::x11 {
namespace {

/// The text with the selection in brackets, or a bar where the caret is.
std::string shown(const TextEditing& editing) {
    std::string text = editing.text();
    if (!editing.hasSelection()) return text.insert(editing.caret(), "|");
    text.insert(editing.selectionEnd(), "]");
    return text.insert(editing.selectionStart(), "[");
}

TextEditing with(const char* text) {
    TextEditing editing;
    editing.setText(text);
    return editing;
}

TEST(TextEditing, MovesByWhatAPersonTakesForACharacter) {
    TextEditing editing = with("ae\u0301日👩‍👧x");  // an accent of its own, and a family that is one picture
    std::string way;
    for (int i = 0; i < 6; ++i) {
        editing.move(Movement::CharacterBack, Selection::Drop);
        way += std::to_string(editing.caret()) + " ";
    }
    EXPECT_EQ(way, "18 7 4 1 0 0 ");
    editing.move(Movement::CharacterForward, Selection::Drop);
    editing.erase(Movement::CharacterForward);
    EXPECT_EQ(editing.text(), "a日👩‍👧x") << "the accent goes with its letter";
}

TEST(TextEditing, MovesSelectsAndErasesByWords) {
    TextEditing editing = with("one  two, three");
    editing.move(Movement::WordBack, Selection::Drop);
    EXPECT_EQ(shown(editing), "one  two, |three");
    editing.move(Movement::WordBack, Selection::Extend);
    EXPECT_EQ(shown(editing), "one  [two, ]three");
    editing.move(Movement::CharacterForward, Selection::Drop);
    EXPECT_EQ(shown(editing), "one  two, |three") << "an arrow goes to the selection's end";
    editing.erase(Movement::WordBack);
    EXPECT_EQ(shown(editing), "one  |three");
    editing.erase(Movement::WordForward);
    EXPECT_EQ(shown(editing), "one  |");
    editing.erase(Movement::CharacterForward);
    EXPECT_EQ(shown(editing), "one  |") << "nothing is behind the end";
    editing.selectWordAt(1);
    EXPECT_EQ(shown(editing), "[one]  ");
    editing.insert("1");
    EXPECT_EQ(shown(editing), "1|  ");
    editing.selectAll();
    editing.erase(Movement::CharacterBack);
    EXPECT_EQ(shown(editing), "|");
    editing.selectWordAt(5);
    editing.erase(Movement::WordBack);
    EXPECT_EQ(shown(editing), "|");
}

TEST(TextEditing, TakesNothingThatIsNoLineOfText) {
    TextEditing editing = with("");
    editing.insert(
        "a\nb\tc\x01\x7F\u2028"
        "d");
    EXPECT_EQ(editing.text(), "a b c d");
    editing.setText("\xFF\xC3");
    EXPECT_EQ(editing.text(), "\uFFFD\uFFFD");
    editing.setText(std::string(100'000, 'x'));
    EXPECT_EQ(editing.text().size(), TextEditing::kMaxCharacters);
    editing.insert("more");
    EXPECT_EQ(editing.text().size(), TextEditing::kMaxCharacters);
    editing.move(Movement::Start, Selection::Drop);
    editing.move(Movement::CharacterForward, Selection::Extend);
    editing.insert("日本");
    EXPECT_EQ(editing.text().size(), TextEditing::kMaxCharacters + 2) << "one character's room was free";
    editing.moveTo(1'000'000, Selection::Drop);
    EXPECT_EQ(editing.caret(), editing.text().size());
    editing.moveTo(1, Selection::Drop);
    EXPECT_EQ(editing.caret(), 0u) << "in the middle of a character";
}

}  // namespace
}  // namespace morvel::x11
