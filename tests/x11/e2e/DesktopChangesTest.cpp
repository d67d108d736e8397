// The desktop changes under the bar: workspaces, monitors, the window manager, and the bar's place among windows.
#include <utility>

#include "BarTest.h"
#include "harness/DragPeer.h"

namespace morvel::e2e {
namespace {

class DesktopChanges : public BarTest {
protected:
    std::vector<Box> panelBoxes() {
        std::vector<Box> all;
        for (const BarWindow& panel : bar->panels()) all.push_back(panel.box);
        return all;
    }
    testing::AssertionResult hasPanelsAt(const std::vector<Box>& wanted) {
        return eventually([&] { return panelBoxes() == wanted; }) << testing::PrintToString(panelBoxes());
    }
};

TEST_F(DesktopChanges, AWorkspaceShowsOnlyItsWindows) {
    const auto here = client.openAndWait({.title = "Here"});
    const auto everywhere = client.openAndWait({.title = "Everywhere"});
    const auto there = client.openAndWait({.title = "There"});
    startBar();
    ASSERT_TRUE(showsButton("There"));
    constexpr uint32_t kAllWorkspaces = 0xFFFFFFFF;
    desktop.sendToWorkspace(everywhere, kAllWorkspaces);
    desktop.sendToWorkspace(there, 1);
    EXPECT_TRUE(showsButtons({"Here", "Everywhere"}));
    desktop.showWorkspace(1);
    EXPECT_TRUE(showsButtons({"There", "Everywhere"}));
    EXPECT_EQ(bar->panels().size(), 1U) << "the bar stays behind";
    desktop.sendToWorkspace(here, 1);
    EXPECT_TRUE(showsButtons({"Here", "There", "Everywhere"}));
    desktop.showWorkspace(0);
    EXPECT_TRUE(showsButtons({"Everywhere"}));
}

TEST_F(DesktopChanges, EveryMonitorHasItsBarWhileItIsThere) {
    const auto mover = client.openAndWait({.title = "Mover", .box = {60, 60, 300, 200}});
    client.openAndWait({.title = "Stayer", .box = {720, 60, 300, 200}});
    startBar({.defaults = kNeverGrouped});
    const auto half = [](const Box& monitor) { return Box{monitor.x, 800 - 44, monitor.width, 44}; };
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(showsButtons({"Mover", "Stayer"})) << "round " << round;
        splitInTwo();
        ASSERT_TRUE(hasPanelsAt({half(kLeft), half(kRight)}));
        EXPECT_TRUE(showsButtons({"Mover"}, 0));
        EXPECT_TRUE(showsButtons({"Stayer"}, 1));
        desktop.setMonitors({});
        ASSERT_TRUE(hasPanelsAt({half(desktop.box())}));
    }
    splitInTwo();
    ASSERT_TRUE(showsButtons({"Stayer"}, 1));
    desktop.place(mover, {760, 100, 300, 200});
    EXPECT_TRUE(showsButtons({"Mover", "Stayer"}, 1));
    EXPECT_TRUE(showsButtons({}, 0));

    pointer.rightClick(bar->button("Mover", 1)->frame.center());
    pointer.moveTo(popupItem("Move to Display").center());
    ASSERT_TRUE(showsInPopup("left")) << "a submenu with the other display";
    pick("left");
    EXPECT_TRUE(eventually([&] { return kLeft.contains(desktop.windowBox(mover).center()); }));
    ASSERT_TRUE(showsButtons({"Mover"}, 0));

    const Box target = bar->button("Stayer", 1)->frame;
    pointer.drag(bar->button("Mover", 0)->frame.center(), {target.x + 4, target.center().y});
    EXPECT_TRUE(eventually([&] { return kRight.contains(desktop.windowBox(mover)); })) << desktop.windowBox(mover);
    EXPECT_TRUE(eventually([&] {
        return bar->buttonTitles(1) == std::vector<std::string>{"Mover", "Stayer"};
    })) << "in the slot it was dropped at";
    EXPECT_TRUE(showsButtons({}, 0));
}

TEST_F(DesktopChanges, ATopBarFollowsItsMonitorAndHasNoMenuBarBesideIt) {
    client.openAndWait({.title = "Left", .box = {60, 160, 300, 200}});
    client.openAndWait({.title = "Right", .box = {720, 360, 300, 200}});
    splitInTwo();
    startBar({.defaults = R"({"barEdge": "top", "compactAtTop": true, "autoDetectMacOSMenuWidth": true})"}, 2);
    EXPECT_TRUE(hasPanelsAt({{0, 0, 640, 44}, {640, 0, 640, 44}}));
    EXPECT_FALSE(bar->panelItem("Expand status icons"));
    const auto ids = [&] { return std::set{bar->panels().at(0).id, bar->panels().at(1).id}; };
    const auto kept = ids();

    desktop.setMonitors({{"left", {0, 0, 900, 800}, true}, {"right", {900, 0, 380, 800}}});  // another resolution
    EXPECT_TRUE(hasPanelsAt({{0, 0, 900, 44}, {900, 0, 380, 44}}));
    desktop.setMonitors({{"left", {640, 300, 640, 500}, true}, {"right", {0, 0, 640, 800}}});  // changed places
    EXPECT_TRUE(hasPanelsAt({{0, 0, 640, 44}, {640, 300, 640, 44}}));
    EXPECT_TRUE(showsButton("Right", 1));
    EXPECT_EQ(ids(), kept) << "no bar was made anew";
    desktop.setMonitors({{"left", desktop.box(), true}, {"right", desktop.box()}});  // one shows the other
    EXPECT_TRUE(eventually([&] { return std::ranges::count(panelBoxes(), Box{0, 0, 1280, 44}) >= 1; }));
    desktop.setMonitors({});
    EXPECT_TRUE(hasPanelsAt({{0, 0, 1280, 44}}));
}

TEST_F(DesktopChanges, ButtonsSurviveTheWindowManager) {
    const auto window = client.openAndWait({.title = "Survivor"});
    startBar();
    ASSERT_TRUE(showsButton("Survivor"));
    for (int round = 0; round < 2; ++round) {
        world.manager.stop();
        desktop.runFor(300ms);
        EXPECT_TRUE(bar->program().isRunning());
        world.manager.start();
        ASSERT_TRUE(showsButton("Survivor"));
        ASSERT_TRUE(bar->waitForPanels(1));
    }
    client.openAndWait({.title = "Newcomer"});
    EXPECT_TRUE(showsButtons({"Survivor", "Newcomer"})) << "it no longer follows the new manager";
    clickButton("Survivor");
    EXPECT_TRUE(becomesActive(window));
}

TEST_F(DesktopChanges, WhatAnotherWindowHasCoveredIsPaintedAgain) {
    client.openAndWait({.title = "Kept"});
    startBar();
    ASSERT_TRUE(showsButton("Kept"));
    const Box panel = panelBox();
    Screenshot before = world.shoot();
    const auto rests = [&] {
        desktop.runFor(200ms);
        const Screenshot earlier = std::exchange(before, world.shoot());
        return earlier.differenceTo(before, panel).isEmpty();
    };
    ASSERT_TRUE(eventually(rests));
    {
        const DragPeer cover(world.server, desktop, {panel.x + 20, panel.y + 10, 300, 20});
        ASSERT_TRUE(eventually([&] { return !world.shoot().differenceTo(before, panel).isEmpty(); }));
    }
    EXPECT_TRUE(eventually([&] { return world.shoot().differenceTo(before, panel).isEmpty(); }));
}

TEST_F(DesktopChanges, TheBarNeverTakesTheFocus) {
    const auto window = client.openAndWait({.title = "In front"});
    startBar();
    ASSERT_TRUE(showsButton("In front"));
    ASSERT_TRUE(becomesActive(window));
    const auto focus = desktop.inputFocus();
    pointer.click({panelBox().right() - 300, panelBox().center().y});  // the empty part
    desktop.runFor(200ms);
    desktop.activate(bar->panels().at(0).id);  // even when somebody asks for it
    desktop.runFor(200ms);
    EXPECT_EQ(desktop.inputFocus(), focus);
    EXPECT_EQ(desktop.activeWindow(), window);
}

TEST_F(DesktopChanges, WhatAStartingWindowManagerLostIsAskedAgain) {
    world.manager.stop();
    auto forgetful = std::make_unique<Connection>(world.server.display());
    forgetful->listen(forgetful->root(), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT);
    forgetful->sync();
    bar.emplace(world.server, desktop, MORVEL_PROGRAM, Bar::Options{});
    ASSERT_TRUE(eventually([&] {
        while (const auto event = forgetful->next())
            if (typeOf(event) == XCB_MAP_REQUEST) return true;
        return false;
    }));
    EXPECT_TRUE(bar->panels().empty());
    forgetful.reset();  // and with it what it was asked
    world.manager.start();
    EXPECT_TRUE(hasPanelsAt({{0, 800 - 44, 1280, 44}}));
}

}  // namespace
}  // namespace morvel::e2e
