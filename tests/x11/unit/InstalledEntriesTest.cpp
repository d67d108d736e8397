// Which desktop entries count as installed applications, under which identifiers, and which windows are theirs.
#include "Platform/Linux/Applications/InstalledEntries.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <map>

#include "Platform/Linux/Applications/DesktopEntries.h"
#include "x11/TemporaryFolder.h"

namespace morvel::x11 {
namespace {

std::string entry(const std::string& name, const std::string& more = "") {
    return "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=true\n" + more;
}

/// The data folders of this process. They are found once and then watched, so all stands before anything else runs.
struct DataFolders {
    DataFolders() {
        const char* others = getenv("XDG_DATA_DIRS");
        setenv("XDG_DATA_HOME", own.at("").c_str(), 1);
        setenv("XDG_DATA_DIRS", (system.at("") + ":" + (others ? others : "/usr/local/share:/usr/share")).c_str(), 1);
        for (const auto& [name, text] : std::map<std::string, std::string>{
                 {"plain.desktop", entry("Plain")},
                 {"suite/text.desktop", entry("Text")},
                 {"readme.txt", "no entry"},
                 {"deleted.desktop", entry("Deleted", "Hidden=true\n")},
                 {"missing.desktop", entry("Missing", "TryExec=/no/such/program\n")},
                 {"binary.desktop", std::string("\0\1\2", 3)},
                 {"empty.desktop", ""},
                 {"link.desktop", "[Desktop Entry]\nType=Link\nName=Link\nURL=https://example.com\n"},
                 {"unclosed.desktop", "[Desktop Entry]\nType=Application\nName=U\nExec=\"true\n"},
                 {"helper.desktop", entry("Helper", "NoDisplay=true\n")},
                 {"other.desktop", entry("Other", "OnlyShowIn=Elsewhere;\n")},
                 {"replaced.desktop", entry("Ours")},
                 {"masked.desktop", entry("Masked", "Hidden=true\n")},
                 {"org.example.Paint.desktop", entry("Paint", "StartupWMClass=Painter\nIcon=/no/icon.png\n")},
                 {"a-gone.desktop", entry("Gone", "StartupWMClass=Editor\nTryExec=/no/such/program\n")},
                 {"b-editor.desktop", entry("Editor", "StartupWMClass=editor\n")},
                 {"a-tool.desktop",
                  "[Desktop Entry]\nType=Application\nName=T\nNoDisplay=true\nExec=env X=1 /bin/cat %f\n"},
                 {"sub/tool.desktop", "[Desktop Entry]\nType=Application\nName=T\nExec=env X=1 /bin/cat %f\n"},
             })
            own.write("applications/" + name, text);
        for (const char* name : {"replaced", "masked", "theirs"})
            system.write("applications/" + std::string(name) + ".desktop",
                         entry("Theirs", std::string("StartupWMClass=class-of-") + name + "\n"));
    }
    TemporaryFolder own, system;
};
DataFolders folders;

class Installed : public testing::Test {
protected:
    std::optional<ApplicationBundle> bundle(const std::string& name) {
        return entries_.bundle(folders.own.at("applications/" + name + ".desktop"));
    }
    std::optional<ApplicationBundle> theirBundle(const std::string& name) {
        return entries_.bundle(folders.system.at("applications/" + name + ".desktop"));
    }
    InstalledEntries entries_;
};

TEST_F(Installed, FoldersAndNamesFollowTheStandard) {
    const auto all = entries_.folders();
    ASSERT_GE(all.size(), 2u);
    const auto names = entries_.list(all[0]).value();
    EXPECT_EQ(std::ranges::count(names, "plain.desktop"), 1);
    EXPECT_EQ(std::ranges::count(names, "suite/text.desktop"), 1);
    EXPECT_EQ(std::ranges::count(names, "readme.txt"), 0);
    EXPECT_EQ(entries_.list(all[0] + "/none"), std::nullopt);
    for (const char* path : {"/suite/text.desktop", "/plain.desktop"}) ASSERT_TRUE(entries_.bundle(all[0] + path));
    EXPECT_EQ(entries_.bundle(all[0] + "/suite/text.desktop")->identifier, "suite-text");
    EXPECT_EQ(entries_.bundle(all[0] + "/plain.desktop")->displayName, "Plain");
    const auto copy = entries_.bundle("/home/me/Desktop/plain.desktop");
    ASSERT_TRUE(copy) << "a copy of an installed entry stands for it";
    EXPECT_EQ(copy->identifier, "plain");
}

TEST_F(Installed, WhatIsDamagedDeletedOrReplacedIsNone) {
    for (const char* name : {"deleted", "missing", "binary", "empty", "link", "unclosed", "nowhere"})
        EXPECT_FALSE(bundle(name)) << name;
    for (const auto& [name, isHidden] : {std::pair{"helper", true}, {"other", true}, {"plain", false}}) {
        ASSERT_TRUE(bundle(name)) << name;
        EXPECT_EQ(bundle(name)->isHidden, isHidden) << name;
    }
    EXPECT_TRUE(theirBundle("theirs"));
    EXPECT_FALSE(theirBundle("masked")) << "the person has deleted it";
    ASSERT_TRUE(theirBundle("replaced"));
    EXPECT_EQ(theirBundle("replaced")->displayName, "Ours");
    for (const char* path : {"", ".desktop", "plain", "/plain.txt"}) EXPECT_FALSE(entries_.bundle(path)) << path;
}

TEST_F(Installed, WindowsLeadToTheirsByClassOrProgram) {
    DesktopEntries entries;
    const auto idFor = [&](const std::string& instance, const std::string& name) {
        const auto found = entries.findForClass(instance, name);
        return found ? found->id : "";
    };
    EXPECT_EQ(idFor("x", "painter"), "org.example.Paint");
    EXPECT_EQ(idFor("EDITOR", ""), "b-editor") << "the first of that class cannot be started";
    EXPECT_EQ(idFor("cat", "Cat"), "sub-tool") << "what no menu shows is a helper";
    EXPECT_EQ(idFor("x", "class-of-theirs"), "theirs");
    EXPECT_EQ(idFor("x", "class-of-masked"), "") << "the person has deleted it";
    EXPECT_EQ(idFor("x", "class-of-replaced"), "") << "the person's own says nothing of a class";
    EXPECT_EQ(idFor("", "../plain"), "");
}

TEST_F(Installed, NamesAreInThePersonsOrder) {
    std::vector<std::string> names{"Notes 10", "zebra", "Notes 2", "Atlas", "notes 1", "\xff\xfe broken"};
    std::ranges::sort(names,
                      [&](const std::string& a, const std::string& b) { return entries_.compareNames(a, b) < 0; });
    std::erase_if(names, [](const std::string& name) { return name.ends_with("broken"); });
    EXPECT_EQ(names, (std::vector<std::string>{"Atlas", "notes 1", "Notes 2", "Notes 10", "zebra"}));
    EXPECT_EQ(entries_.compareNames("Notes", "Notes"), 0);
}

}  // namespace
}  // namespace morvel::x11
