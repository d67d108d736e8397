// What other programs write into drags, read without trust: lists of files, offered types.
#include <gtest/gtest.h>

#include "Platform/Linux/UI/Drag/DragContents.h"
#include "Platform/Linux/UI/Drag/UriList.h"

namespace morvel::x11 {
namespace {

using Paths = std::vector<std::string>;

TEST(UriList, GivesTheLocalFilesInTheirOrder) {
    struct Row {
        const char* why;
        std::string list;
        Paths paths;
    };
    for (const Row& row : std::vector<Row>{
             {"as the standard writes it", "file:///tmp/a\r\nfile:///tmp/b\r\n", {"/tmp/a", "/tmp/b"}},
             {"lines end as they like", "file:///a\nfile:///b\rfile:///c", {"/a", "/b", "/c"}},
             {"empty lines", "\r\n\r\nfile:///a\r\n\r\n", {"/a"}},
             {"comments", "# file:///no\r\nfile:///a\r\n", {"/a"}},
             {"no host", "file:/tmp/a", {"/tmp/a"}},
             {"this host by name, in any case", "FILE://LocalHost/tmp/a", {"/tmp/a"}},
             {"decoded", "file:///tmp/a%20b%2Fc%C3%a9", {"/tmp/a b/cé"}},
             {"decoded once", "file:///100%2525", {"/100%25"}},
             {"no query or fragment, unless encoded", "file:///a%23b?c#d", {"/a#b"}},
             {"another host", "file://elsewhere.example/tmp/a", {}},
             {"other schemes", "https://localhost/a\r\nfiles:///b\r\nfile\r\nfile:\r\ntrash:///c", {}},
             {"not absolute", "file:a\r\nfile:.\r\nfile://localhost", {}},
             {"broken escapes", "file:///a%\r\nfile:///a%2\r\nfile:///a%zz\r\nfile:///a%-1\r\nfile:///ok", {"/ok"}},
             {"a zero byte, encoded or not", std::string("file:///a%00b\r\nfile:///a\0b\r\n", 28), {}},
             {"bytes that are no text stay as they are", "file:///\xFF\xFE", {"/\xFF\xFE"}},
             {"nothing", "", {}},
         })
        EXPECT_EQ(localPathsIn(row.list), row.paths) << row.why;
}

TEST(UriList, IsBounded) {
    std::string list;
    for (int i = 0; i < 100000; ++i) list += "file:///a\n";
    EXPECT_EQ(localPathsIn(list).size(), 4096U);
    EXPECT_TRUE(localPathsIn(std::string(1 << 20, '%')).empty());
    EXPECT_TRUE(localPathsIn(std::string(1 << 20, '\n')).empty());
}

TEST(DragContents, OfAnotherProgramAreNamesUntilFetched) {
    const std::string own = "app.morvel.Morvel.running-window";
    DragContents contents = DragContents::offered({"TEXT", "text/plain", "text/uri-list", own, "text/uri-list"});
    EXPECT_TRUE(contents.hasFileURLs());
    EXPECT_TRUE(contents.hasType(ui::kFileURLType));
    EXPECT_TRUE(contents.hasType(own));
    EXPECT_FALSE(contents.string(own)) << "not asked for yet";
    EXPECT_TRUE(contents.filePaths().empty());
    EXPECT_EQ(contents.namesToFetch(), (Paths{"text/uri-list", own})) << "and no text that no view reads";

    contents.fetched("text/uri-list", "file:///tmp/a%20b\r\nfile:///tmp/c\r\n");
    contents.fetched(own, "not a UUID");
    contents.fetched("never.offered", "surprise");
    EXPECT_EQ(contents.filePaths(), (Paths{"/tmp/a b", "/tmp/c"}));
    EXPECT_EQ(contents.string(ui::kFileURLType), "file:///tmp/a%20b");
    EXPECT_EQ(contents.string(own), "not a UUID");
    EXPECT_FALSE(contents.hasType("never.offered"));
}

TEST(DragContents, KnowFilesUnderOneNameOnly) {
    const DragContents contents =
        DragContents::offered({std::string(ui::kFileURLType), std::string(ui::kLegacyFilenamesType), "x.y"});
    EXPECT_FALSE(contents.hasFileURLs()) << "its contents could not be asked for";
    EXPECT_FALSE(contents.hasType(ui::kLegacyFilenamesType));
    EXPECT_TRUE(contents.hasType("x.y"));
}

TEST(DragContents, AreBounded) {
    Paths names;
    for (int i = 0; i < 10000; ++i) names.push_back("type." + std::to_string(i));
    const DragContents contents = DragContents::offered(names);
    EXPECT_TRUE(contents.hasType("type.0"));
    EXPECT_FALSE(contents.hasType("type.9999"));
    EXPECT_LE(contents.namesToFetch().size(), 4U) << "each is waited for";
}

}  // namespace
}  // namespace morvel::x11
