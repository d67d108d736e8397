// Installed applications as bundles on disk, with everything that can be wrong with them.
#include "Platform/Mac/Applications/MacInstalledApplications.h"

#include <stdlib.h>

#include <filesystem>
#include <map>

#include "Platform/Mac/apple/Foundation/NSBundle.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

class InstalledOnTheMac : public RuntimeTest {
protected:
    InstalledOnTheMac() {
        std::string pattern = std::filesystem::temp_directory_path() / "morvel-apps-XXXXXX";
        own_ = std::filesystem::canonical(mkdtemp(pattern.data()));
        runtime().script("NSString", "stringByExpandingTildeInPath", [this](Invocation& i) {
            EXPECT_EQ(textOf(i.receiver()), "~/Applications");
            i.answerObject(makeString(own_));
        });
        runtime().script("NSBundle", "initWithURL:", [this](Invocation& i) {
            const std::string path = NSURL(i.object(0)).path().text();
            if (!infos_.contains(path)) {
                runtime().release(i.receiver());
                return i.answer<RawObject>(nullptr);
            }
            setPayload(i.receiver(), path);
            i.answer<RawObject>(i.receiver());
        });
        runtime().script("NSBundle", "infoDictionary",
                         [this](Invocation& i) { i.answerObject(infos_.at(*payloadOf<std::string>(i.receiver()))); });
    }
    ~InstalledOnTheMac() override { std::filesystem::remove_all(own_); }

    std::string own_;
    std::map<std::string, Id> infos_;  // by path; nil: the bundle has none
    MacInstalledApplications installed_;
};

TEST_F(InstalledOnTheMac, FoldersAreListedInTheirOrder) {
    EXPECT_EQ(installed_.folders(), (Texts{"/Applications", "/System/Applications", own_}));
    runtime().script("NSFileManager", "contentsOfDirectoryAtPath:error:", [](Invocation& i) {
        if (textOf(i.object(0)) == "/Applications")
            i.answerObject(makeArray({makeString("Notes.app"), makeNumber(std::int64_t{3}), makeString("Utilities")}));
    });
    EXPECT_EQ(installed_.list("/Applications"), (Texts{"Notes.app", "Utilities"}));
    EXPECT_EQ(installed_.list("/System/Applications"), std::nullopt);
}

TEST_F(InstalledOnTheMac, BundlesTellWhatTheySay) {
    infos_["/A.app"] = makeDictionary({{makeString("CFBundleIdentifier"), makeString("app.a")},
                                       {makeString("CFBundleDisplayName"), makeNumber(std::int64_t{4})},
                                       {makeString("CFBundleName"), makeString("A")}});
    infos_["/NoInfo.app"] = Id();
    const auto bundle = installed_.bundle("/A.app");
    ASSERT_TRUE(bundle);
    EXPECT_EQ(bundle->identifier, "app.a");
    EXPECT_EQ(bundle->displayName, std::nullopt) << "a number is no name";
    EXPECT_EQ(bundle->name, "A");
    ASSERT_TRUE(installed_.bundle("/NoInfo.app"));
    EXPECT_EQ(installed_.bundle("/NoInfo.app")->identifier, std::nullopt);
    EXPECT_FALSE(installed_.bundle("/Gone.app"));
    EXPECT_FALSE(installed_.bundle(""));
    infos_.clear();
}

TEST_F(InstalledOnTheMac, NamesAreComparedByTheSystem) {
    runtime().script("NSString", "localizedStandardCompare:", [](Invocation& i) {
        i.answer<std::int64_t>(textOf(i.receiver()) == "Notes 2" && textOf(i.object(0)) == "Notes 10" ? -1 : 1);
    });
    EXPECT_LT(installed_.compareNames("Notes 2", "Notes 10"), 0);
    EXPECT_GT(installed_.compareNames("Notes 10", "Notes 2"), 0);
}

TEST_F(InstalledOnTheMac, ChangesOfAFolderAreHeardUntilTheTokenEnds) {
    int changes = 0;
    Subscription token = installed_.observeChanges([&] { ++changes; });
    dispatch().folderChanged(own_);
    EXPECT_EQ(changes, 0);
    dispatch().runPending();
    EXPECT_EQ(changes, 1);
    dispatch().folderChanged(own_);
    token.reset();
    dispatch().runPending();
    EXPECT_EQ(changes, 1);
    token = installed_.observeChanges([&] { token.reset(); });  // from inside the notice
    dispatch().folderChanged(own_);
    dispatch().runPending();
    EXPECT_FALSE(token);
}

TEST_F(InstalledOnTheMac, AFolderThatComesLaterOrGoesIsNoticed) {
    const std::string home = own_;
    own_ += "/Nested/Applications";
    int changes = 0;
    const auto changesAfter = [&](const std::string& folder) {
        dispatch().folderChanged(folder);
        dispatch().runPending();
        return std::exchange(changes, 0);
    };
    const Subscription token = installed_.observeChanges([&] { ++changes; });
    std::filesystem::create_directory(home + "/Other");
    EXPECT_EQ(changesAfter(home), 0) << "nothing that the list is made of";
    std::filesystem::create_directory(home + "/Nested");
    EXPECT_EQ(changesAfter(home), 0);
    std::filesystem::create_directory(own_);
    EXPECT_EQ(changesAfter(home + "/Nested"), 1);
    EXPECT_EQ(changesAfter(home + "/Nested"), 0) << "only the folder itself is watched now";
    EXPECT_EQ(changesAfter(own_), 1);
    std::filesystem::remove_all(home + "/Nested");
    EXPECT_EQ(changesAfter(own_ + " (deleted)"), 1);
    std::filesystem::create_directories(own_);
    EXPECT_EQ(changesAfter(home), 1);
    own_ = home;
}

}  // namespace
}  // namespace morvel::mac::checked
