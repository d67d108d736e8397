// Displays come, go and change, and each keeps its bar.
#include "App/BarDesktop.h"

namespace morvel {
namespace {

TEST(Displays, EachHasItsBarAndKeepsItWhileOthersComeAndGo) {
    BarDesktop desktop(sim::twoDisplays());
    auto& window = desktop.launch("Editor").open({.title = "left"});
    desktop.startMorvel();
    EXPECT_EQ(desktop.strip(0), "left");
    EXPECT_EQ(desktop.strip(1), "");

    desktop.rightClick(desktop.button("left"));
    desktop.choose({"Move to Display", "Second Display"});
    EXPECT_EQ(desktop.strip(0), "");
    EXPECT_EQ(desktop.strip(1), "left");
    EXPECT_EQ(window.width(), 640) << "moving keeps the size";

    const ui::View* kept = &desktop.bar(0);
    desktop.unplug(DisplayID{2});
    desktop.run(1s);
    EXPECT_EQ(desktop.toolkit().panels().size(), 1u);
    EXPECT_EQ(&desktop.bar(0), kept);
    desktop.plug(sim::twoDisplays()[1]);
    desktop.run(1s);
    EXPECT_EQ(desktop.toolkit().panels().size(), 2u);
    EXPECT_EQ(&desktop.bar(0), kept);

    // For a moment a waking system reports no displays at all.
    desktop.rearrange({});
    desktop.run(50ms);
    desktop.rearrange(sim::twoDisplays());
    desktop.run(1s);
    EXPECT_EQ(desktop.toolkit().panels().size(), 2u);
    EXPECT_EQ(&desktop.bar(0), kept);
}

TEST(Displays, ReconfigurationsPassQuietly) {
    BarDesktop desktop(sim::twoDisplays());
    desktop.startMorvel();
    const ui::View* kept = &desktop.bar(1);
    const auto moves = [&] {
        std::vector<int> all;
        for (const sim::SimPanel* panel : desktop.toolkit().panels()) all.push_back(panel->moves);
        return all;
    };
    // The same list again, one without area, and one that has no number for a moment.
    const std::vector<Screen> screens = desktop.screens().list;
    const auto report = [&](const std::vector<Screen>& list) {
        desktop.screens().list = list;
        desktop.screens().changes.emit();
        desktop.run(1s);
    };
    report(screens);
    std::vector<Screen> odd = screens;
    odd[1].frame = odd[1].visibleFrame = {0, 0, 0, 0};
    report(odd);
    EXPECT_EQ(desktop.toolkit().panels().size(), 2u);
    odd.push_back({std::nullopt, "Nobody", {5000, 0, 800, 600}, {5000, 0, 800, 600}});
    report(odd);
    report(screens);
    EXPECT_EQ(moves(), (std::vector<int>{0, 0}));
    EXPECT_EQ(&desktop.bar(1), kept);
    EXPECT_EQ(desktop.delegate().displayManager()->connectedScreens().size(), 2u);

    // One display goes for a moment. Its bar is on no other meanwhile, and is the same when the display is back.
    desktop.screens().list = {screens[0]};
    desktop.screens().changes.emit();
    desktop.run(100ms);
    ASSERT_EQ(desktop.toolkit().panels().size(), 2u);
    EXPECT_FALSE(desktop.toolkit().panels()[1]->isShown);
    report(screens);
    EXPECT_TRUE(desktop.toolkit().panels()[1]->isShown);
    EXPECT_EQ(&desktop.bar(1), kept);

    // Mirrored, one screen stands for both; the other display's bar goes.
    report({screens[0]});
    EXPECT_EQ(desktop.toolkit().panels().size(), 1u);
    // A display in another resolution, with the first one's place changed too.
    odd = screens;
    odd[0].frame = {0, 0, 1024, 768};
    odd[0].visibleFrame = {0, 0, 1024, 744};
    report(odd);
    ASSERT_EQ(desktop.toolkit().panels().size(), 2u);
    EXPECT_EQ(desktop.toolkit().panels()[0]->frame, (Rect<ScreenSpace>{0, 0, 1024, 44}));
    EXPECT_EQ(moves(), (std::vector<int>{1, 0}));
}

TEST(Displays, SettingsThatChangeTogetherMakeTheBarsAnewOnce) {
    BarDesktop desktop(sim::twoDisplays());
    desktop.startMorvel();
    const auto panelsMadeBy = [&](const std::function<void(SettingsStore&)>& change) {
        const int before = desktop.toolkit().panelsMade;
        change(desktop.settings());
        desktop.run(1s);
        return desktop.toolkit().panelsMade - before;
    };
    const int forOne = panelsMadeBy([](SettingsStore& settings) { settings.barHeight.set(30); });
    EXPECT_GE(forOne, 2);
    EXPECT_EQ(panelsMadeBy([](SettingsStore& settings) {
                  settings.barHeight.set(1000);  // allowed are 64, so this is two changes
                  settings.matchMenuBarHeight.set(!settings.matchMenuBarHeight.value());
                  settings.autoDetectMacOSItemsWidth.set(!settings.autoDetectMacOSItemsWidth.value());
              }),
              forOne);
}

TEST(Displays, WindowsAreFoundWhereTheNewCoordinatesHaveThem) {
    BarDesktop desktop(sim::twoDisplays());
    auto& window = desktop.launch("Editor").open({.x = 1700, .y = 100, .title = "stays"});
    desktop.startMorvel();
    ASSERT_EQ(desktop.strip(1), "stays");
    // The right display becomes the main one. The window stays on it and is told from another corner, with no notice.
    auto displays = sim::twoDisplays();
    displays[1].frame = {-1440, 0, 1440, 900};
    displays[1].id = DisplayID{1};
    displays[0].frame = {0, 0, 1920, 1080};
    displays[0].id = DisplayID{2};
    desktop.accessibility().at(window.element()).attributes.insert_or_assign("AXPosition", Point<AXSpace>{260, 100});
    desktop.rearrange(displays);
    desktop.run(2s);
    EXPECT_EQ(desktop.strip(0), "stays");
    EXPECT_EQ(desktop.strip(1), "");
}

}  // namespace
}  // namespace morvel
