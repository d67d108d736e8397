// Which applications the launcher lists, in which order, and when their folders are read.
#include "Launcher/InstalledAppsLoader.h"

#include "Vectors.h"
#include "sim/Desktop.h"

namespace morvel {

using vectors::Json;

namespace {

void fill(sim::SimInstalledApplications& installed, const Json& input) {
    installed.contents.clear();
    for (const Json& folder : input["folders"])
        installed.contents.emplace_back(folder[0], vectors::optional<std::vector<std::string>>(folder[1]));
    for (const auto& [path, info] : input["bundles"].items())
        if (!info.is_null()) installed.bundles[path] = vectors::bundle(info);
}

class Loading : public testing::Test {
protected:
    std::vector<std::string> names(const InstalledAppsLoader::Apps& apps) {
        std::vector<std::string> out;
        for (const InstalledApp& app : apps) out.push_back(app.displayName);
        return out;
    }
    InstalledAppsLoader::Use into(std::vector<std::string>& list) {
        return [this, &list](const InstalledAppsLoader::Apps& apps) { list = names(apps); };
    }
    std::unique_ptr<InstalledAppsLoader> make() {
        return std::make_unique<InstalledAppsLoader>(desktop_.platform().installedApplications, desktop_.mainLoop(),
                                                     desktop_.workQueues().make("apps"));
    }

    sim::Desktop desktop_;
    sim::SimInstalledApplications& installed_ = desktop_.installedApplications();
};

}  // namespace

TEST(InstalledAppsLoader, RecordedScans) {
    vectors::walk("installed_apps", [](const Json& input) {
        sim::SimInstalledApplications installed;
        fill(installed, input);
        Json out = Json::array();
        for (const InstalledApp& app : InstalledAppsLoader::scan(installed))
            out.push_back({app.bundleID, app.displayName, app.bundleURL});
        return out;
    });
}

TEST_F(Loading, ReadsOnceForAllWhoAskAndAgainAfterAChange) {
    installed_.install("a", "Notes");
    installed_.install("b", "Mail");
    auto loader = make();
    desktop_.settle();
    EXPECT_EQ(installed_.bundlesRead, 0) << "nobody has asked yet";
    std::vector<std::string> first, second, third;
    loader->apps(into(first));
    loader->apps(into(second));
    EXPECT_TRUE(first.empty()) << "the disk is not read on the main thread";
    desktop_.settle();
    EXPECT_EQ(first, (std::vector<std::string>{"Mail", "Notes"}));
    EXPECT_EQ(second, first);
    loader->apps(into(third));
    EXPECT_EQ(third, first) << "known by now, so at once";
    EXPECT_EQ(installed_.bundlesRead, 2);
    installed_.install("c", "Atlas");
    loader->apps(into(third));
    desktop_.settle();
    EXPECT_EQ(third, (std::vector<std::string>{"Atlas", "Mail", "Notes"}));
}

TEST_F(Loading, WhatChangesDuringAScanIsNotMissed) {
    installed_.install("a", "Notes");
    auto loader = make();
    std::vector<std::string> early, late;
    desktop_.workQueues().hold();
    loader->apps(into(early));
    installed_.changes.emit();
    loader->apps([&](const InstalledAppsLoader::Apps& apps) {
        EXPECT_FALSE(early.empty()) << "the first scan's answer comes first";
        late = names(apps);
    });
    installed_.bundles["/Applications/Notes.app"].displayName = "Jotter";
    desktop_.workQueues().letGo();
    desktop_.settle();
    EXPECT_EQ(late, std::vector<std::string>{"Jotter"});
    EXPECT_EQ(installed_.bundlesRead, 2);
}

TEST_F(Loading, AnEndDuringAScanOrDuringItsAnswerIsQuiet) {
    installed_.install("a", "Notes");
    int answers = 0;
    auto loader = make();
    loader->apps([&](const auto&) { ++answers; });
    loader = make();
    desktop_.settle();
    EXPECT_EQ(answers, 0);
    loader->apps([&](const auto&) { loader.reset(); });
    loader->apps([&](const auto&) { ++answers; });
    desktop_.settle();
    EXPECT_FALSE(loader);
    EXPECT_EQ(answers, 0);
}

}  // namespace morvel
