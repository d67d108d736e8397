#include "Launcher/LauncherFilter.h"

#include "Util/LowerCase.h"
#include "Vectors.h"

namespace morvel {

using vectors::Json;

namespace {

std::vector<std::string> lowerCasedNames(const std::vector<std::string>& names) {
    std::vector<std::string> lowered;
    for (const std::string& name : names) lowered.push_back(lowerCased(name));
    return lowered;
}

std::string best(const std::string& query, const std::vector<std::string>& names) {
    const auto lowered = lowerCasedNames(names);
    const auto kept = LauncherFilter::filtered(lowerCased(query), lowered);
    const auto place = LauncherFilter::bestMatch(lowerCased(query), lowered, kept);
    return place ? names[kept[*place]] : "none";
}

}  // namespace

TEST(LauncherFilter, RecordedQueries) {
    vectors::walk("launcher_filter", [](const Json& input) -> Json {
        const auto names = lowerCasedNames(input["names"].get<std::vector<std::string>>());
        return LauncherFilter::filtered(lowerCased(input["query"].get<std::string>()), names);
    });
}

TEST(LauncherFilter, SelectsWhatWasProbablyMeant) {
    struct Row {
        const char *why, *query, *expected;
        std::vector<std::string> names;
    };
    for (const Row& row : {
             Row{"a beginning before a word", "te", "Terminal", {"iTerm", "Plain Text", "Terminal", "TextEdit"}},
             Row{"a word before a part of one", "mon", "System Monitor", {"Common", "System Monitor", "Lemon"}},
             Row{"a word after a dash", "c", "A.B-C+", {"Mac", "A.B-C+"}},
             Row{"a part, the first of them", "om", "Common", {"Common", "Tom"}},
             Row{"the second place in a name counts too", "at", "Matte at Work", {"Chat", "Matte at Work"}},
             Row{"an accent ends no word", "d", "Éd", {"Éd", "xd"}},
             Row{"nothing is meant before anything is typed", "", "none", {"Mail"}},
             Row{"nothing found", "zz", "none", {"Mail"}},
         })
        EXPECT_EQ(best(row.query, row.names), row.expected) << row.why;
}

TEST(LowerCase, IsTheSameInEveryLocale) {
    struct Row {
        const char *text, *lower;
    };
    for (const Row& row :
         {Row{"SAFARI 2", "safari 2"}, Row{"ÀÞßÿŸ×÷", "àþßÿÿ×÷"}, Row{"ĀĶĹŊŽ", "āķĺŋž"}, Row{"ΆΑΣΩΫ", "άασωϋ"},
          Row{"ЀЙЯҐӁӀ", "ѐйяґӂӏ"}, Row{"ԱՖ", "աֆ"}, Row{"ẞẠὈὟＡ", "ßạὀὗａ"}, Row{"İI", "i\u0307i"}, Row{"K", "k"},
          Row{"日本語🎵", "日本語🎵"}, Row{"\xC3", "\xC3"}, Row{"\xE1\xBA", "\xE1\xBA"},
          Row{"A\xFF"
              "B\xC0\x80",
              "a\xFF"
              "b\xC0\x80"}})
        EXPECT_EQ(lowerCased(row.text), row.lower) << row.text;
}

}  // namespace morvel
