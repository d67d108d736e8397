#include "Platform/Linux/Applications/EntryCandidates.h"

#include <gtest/gtest.h>

namespace morvel::x11 {
namespace {

using Names = std::vector<std::string>;

TEST(EntryCandidates, TryTheNamesAsWrittenAndThenInLowerCase) {
    EXPECT_EQ(entryCandidates("xterm", "XTerm"), (Names{"xterm", "XTerm"}));
    EXPECT_EQ(entryCandidates("Navigator", "Firefox"), (Names{"Navigator", "Firefox", "navigator", "firefox"}));
    EXPECT_EQ(entryCandidates("org.example.Viewer", "org.example.Viewer"),
              (Names{"org.example.Viewer", "org.example.viewer"}));
    EXPECT_EQ(entryCandidates("", "My App"), (Names{"My-App", "my-app"}));
}

TEST(EntryCandidates, NeverLeadOutOfTheApplicationsFolder) {
    EXPECT_TRUE(entryCandidates("../../etc/evil", "/tmp/evil").empty());
    EXPECT_TRUE(entryCandidates(".hidden", "").empty());
}

TEST(ExecProgram, IsThePlainNameOfWhatRuns) {
    struct Row {
        const char *line, *program;
    };
    for (const Row& row : {Row{"xterm", "xterm"}, Row{"/usr/bin/galculator %F", "galculator"},
                           Row{"\"/opt/My App/app\" --new", "app"}, Row{"env LANG=C /usr/bin/tool -x", "tool"},
                           Row{"FOO=/a/b tool", "tool"}, Row{"sh -c \"thing\"", ""}, Row{"/usr/bin/python3 x.py", ""},
                           Row{"flatpak run org.x.Y", ""}, Row{"   ", ""}, Row{"\"unfinished", "unfinished"}})
        EXPECT_EQ(execProgram(row.line), row.program) << row.line;
}

}  // namespace
}  // namespace morvel::x11
