#include "Platform/Linux/System/XSettings.h"

#include <gtest/gtest.h>

#include <string>

namespace morvel::x11 {
namespace {

using namespace std::string_literals;

constexpr std::string_view kName = "Gtk/EnableAnimations";

const std::string kHead = "\0\0\0\0\7\0\0\0"s;
const std::string kText = "\1\0\4\0Name\5\0\0\0\3\0\0\0abc\0"s;
const std::string kColor = "\2\0\5\0Color\0\0\0\5\0\0\0\1\2\3\4\5\6\7\x8"s;
const std::string kAnimations = "\0\0\x14\0Gtk/EnableAnimations\5\0\0\0\1\0\0\0"s;

TEST(XSettings, ReadsOneNumberAmongTheOthers) {
    struct Row {
        const char* why;
        std::string published;
        std::optional<int32_t> value;
    };
    const std::string bigEndian = "\1\0\0\0\0\0\0\7\0\0\0\1\0\0\0\x14Gtk/EnableAnimations\0\0\0\5\xFF\xFF\xFF\xFE"s;
    for (const Row& row : {
             Row{"alone", kHead + "\1\0\0\0"s + kAnimations, 1},
             Row{"after every other type", kHead + "\3\0\0\0"s + kText + kColor + kAnimations, 1},
             Row{"in the other byte order, negative", bigEndian, -2},
             Row{"not there", kHead + "\2\0\0\0"s + kText + kColor, std::nullopt},
             Row{"another type under its name", kHead + "\1\0\0\0\2"s + kAnimations.substr(1) + "\0\0\0\0"s,
                 std::nullopt},
             Row{"after a type that nobody knows", kHead + "\2\0\0\0\3\0\0\0\0\0\0\0"s + kAnimations, std::nullopt},
             Row{"more settings promised than there are", kHead + "\xFF\xFF\xFF\xFF"s + kText, std::nullopt},
             Row{"a name longer than all", kHead + "\1\0\0\0\0\0\xFF\xFFName"s, std::nullopt},
             Row{"a text longer than all", kHead + "\2\0\0\0\1\0\4\0Name\0\0\0\0\xFF\xFF\xFF\xFF"s + kAnimations,
                 std::nullopt},
         })
        EXPECT_EQ(xSettingsNumber(row.published, kName), row.value) << row.why;
}

TEST(XSettings, ReadsOneText) {
    const std::string whole = kHead + "\3\0\0\0"s + kAnimations + kColor + kText;
    EXPECT_EQ(xSettingsText(whole, "Name"), "abc");
    EXPECT_EQ(xSettingsText(whole, kName), std::nullopt) << "a number";
    EXPECT_EQ(xSettingsText(whole.substr(0, whole.size() - 1), "Name"), std::nullopt) << "cut off";
}

TEST(XSettings, CutOffAnywhereSaysNothing) {
    const std::string whole = kHead + "\3\0\0\0"s + kText + kColor + kAnimations;
    for (size_t size = 0; size < whole.size(); ++size)
        EXPECT_EQ(xSettingsNumber(std::string_view(whole).substr(0, size), kName), std::nullopt) << size;
}

}  // namespace
}  // namespace morvel::x11
