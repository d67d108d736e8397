#include "Platform/Linux/Windows/TextProperty.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <random>

namespace morvel::x11 {
namespace {

using namespace std::string_literals;

constexpr const char* kBad = "\xEF\xBF\xBD";

TEST(CleanUtf8, KeepsWhatIsValidAndReplacesTheRest) {
    struct Row {
        const char* why;
        std::string in, out;
    };
    for (const Row& row : {
             Row{"valid of every length", "a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80",
                 "a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80"},
             Row{"a stray byte", "a\xFFz", "a"s + kBad + "z"},
             Row{"a lone continuation", "a\x80z", "a"s + kBad + "z"},
             Row{"a sequence that breaks off inside", "a\xE2\x82z", "a"s + kBad + "z"},
             Row{"a sequence that the end cuts off", "a\xE2\x82", "a"},
             Row{"overlong", "\xC0\xAFz", std::string(kBad) + kBad + "z"},
             Row{"a surrogate", "\xED\xA0\x80z", std::string(kBad) + kBad + kBad + "z"},
             Row{"beyond the last code point", "\xF4\x90\x80\x80z", std::string(kBad) + kBad + kBad + kBad + "z"},
             Row{"a second text", "one\0two"s, "one"},
             Row{"line breaks", "one\ntwo\tthree", "one two three"},
         })
        EXPECT_EQ(cleanUtf8(row.in), row.out) << row.why;
}

TEST(CleanUtf8, IsAlwaysValid) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        std::mt19937 random(seed);
        std::string text;
        for (unsigned i = random() % 24; i > 0; --i)
            text += static_cast<char>(random() % 3 ? random() | 0x80 : random());
        const std::string clean = cleanUtf8(text);
        EXPECT_TRUE(g_utf8_validate(clean.data(), gssize(clean.size()), nullptr)) << "seed " << seed;
        if (g_utf8_validate(text.data(), gssize(text.size()), nullptr)) {
            EXPECT_EQ(clean.size(), text.size()) << "seed " << seed;
        }
    }
}

TEST(LegacyTexts, AreReadByTheirType) {
    EXPECT_EQ(latin1ToUtf8("caf\xE9"), "caf\xC3\xA9");
    EXPECT_EQ(compoundTextToUtf8("caf\xE9"), "caf\xC3\xA9") << "Latin-1 is selected at the start";
    EXPECT_EQ(compoundTextToUtf8("a\x1B%G\xE2\x82\xAC\x1B%@b"),
              "a\xE2\x82\xAC"
              "b")
        << "an embedded UTF-8 part";
    EXPECT_EQ(compoundTextToUtf8("a\x1B$)B\xB4\xC1\x1B-A\xE9"), "a"s + kBad + "\xC3\xA9")
        << "one mark per foreign part";
    EXPECT_EQ(compoundTextToUtf8("a\x1B"), "a"s + kBad);
    EXPECT_EQ(compoundTextToUtf8("a\x1B%Gb"), "ab") << "an unfinished part";
}

TEST(SplitAtNul, TakesTheLastTextWithOrWithoutItsEnd) {
    EXPECT_EQ(splitAtNul("xterm\0XTerm\0"s), (std::vector{"xterm"s, "XTerm"s}));
    EXPECT_EQ(splitAtNul("xterm\0XTerm"s), (std::vector{"xterm"s, "XTerm"s}));
    EXPECT_EQ(splitAtNul("\0XTerm\0"s), (std::vector{""s, "XTerm"s}));
    EXPECT_TRUE(splitAtNul("").empty());
}

}  // namespace
}  // namespace morvel::x11
