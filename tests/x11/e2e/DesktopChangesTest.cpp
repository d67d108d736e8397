// The desktop changes under the bar: workspaces, monitors, the window manager, and the bar's place among windows.
#include "BarTest.h"

namespace morvel::e2e {
namespace {

constexpr Box kLeft{0, 0, 640, 800};
constexpr Box kRight{640, 0, 640, 800};

class DesktopChanges : public BarTest {
protected:
    void splitInTwo() { desktop.setMonitors({{"left", kLeft, true}, {"right", kRight}}); }
    /// The panel that lies on this monitor.
    std::optional<size_t> panelOn(const Box& monitor) {
        const auto panels = bar->panels();
        for (size_t i = 0; i < panels.size(); ++i)
            if (monitor.contains(panels[i].box)) return i;
        return std::nullopt;
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
    EXPECT_TRUE(lacksButton("There"));
    EXPECT_TRUE(showsButton("Here"));
    desktop.showWorkspace(1);
    EXPECT_TRUE(showsButton("There"));
    EXPECT_TRUE(lacksButton("Here"));
    EXPECT_TRUE(showsButton("Everywhere"));
    EXPECT_EQ(bar->panels().size(), 1U) << "the bar stays behind";
    desktop.sendToWorkspace(here, 1);
    EXPECT_TRUE(showsButton("Here"));
    desktop.showWorkspace(0);
    EXPECT_TRUE(lacksButton("Here"));
    EXPECT_TRUE(lacksButton("There"));
}

TEST_F(DesktopChanges, EveryMonitorHasItsBar) {
    splitInTwo();
    const auto mover = client.openAndWait({.title = "Mover", .box = {60, 60, 300, 200}});
    client.openAndWait({.title = "Stayer", .box = {720, 60, 300, 200}});
    startBar({}, 2);
    const auto left = panelOn(kLeft);
    const auto right = panelOn(kRight);
    ASSERT_TRUE(left && right);
    EXPECT_TRUE(showsButton("Mover", left));
    EXPECT_TRUE(showsButton("Stayer", right));
    EXPECT_FALSE(bar->button("Mover", right));
    EXPECT_FALSE(bar->button("Stayer", left));

    desktop.place(mover, {760, 100, 300, 200});
    EXPECT_TRUE(showsButton("Mover", right));
    EXPECT_TRUE(lacksButton("Mover", left));

    pointer.rightClick(bar->button("Mover", right)->frame.center());
    pointer.moveTo(popupItem("Move to Display").center());
    const Box target = popupItem("left");
    ASSERT_FALSE(target.isEmpty()) << "no submenu with the other display";
    pointer.click(target.center());
    EXPECT_TRUE(eventually([&] { return kLeft.contains(desktop.windowBox(mover).center()); }));
    EXPECT_TRUE(showsButton("Mover", left));
}

TEST_F(DesktopChanges, MonitorsComeAndGo) {
    client.openAndWait({.title = "On the left", .box = {60, 60, 300, 200}});
    client.openAndWait({.title = "On the right", .box = {720, 60, 300, 200}});
    startBar();
    ASSERT_TRUE(showsButton("On the right"));
    for (int round = 0; round < 3; ++round) {
        splitInTwo();
        ASSERT_TRUE(bar->waitForPanels(2)) << "round " << round;
        ASSERT_TRUE(eventually([&] { return panelOn(kLeft) && panelOn(kRight); }));
        EXPECT_TRUE(showsButton("On the right", panelOn(kRight)));
        EXPECT_TRUE(showsButton("On the left", panelOn(kLeft)));
        desktop.setMonitors({});
        ASSERT_TRUE(bar->waitForPanels(1)) << "round " << round;
        EXPECT_TRUE(eventually([&] { return panelBox().width == desktop.box().width; }));
        EXPECT_TRUE(showsButton("On the right"));
    }
}

TEST_F(DesktopChanges, ATopBarFollowsItsMonitorAndHasNoMenuBarBesideIt) {
    client.openAndWait({.title = "Left", .box = {60, 160, 300, 200}});
    client.openAndWait({.title = "Right", .box = {720, 360, 300, 200}});
    splitInTwo();
    startBar({.defaults = R"({"barEdge": "top", "compactAtTop": true, "autoDetectMacOSMenuWidth": true})"}, 2);
    const auto boxes = [&] {
        std::vector<Box> all;
        for (const BarWindow& panel : bar->panels()) all.push_back(panel.box);
        return all;
    };
    const auto becomes = [&](const std::vector<Box>& wanted) { return eventually([&] { return boxes() == wanted; }); };
    EXPECT_TRUE(becomes({{0, 0, 640, 44}, {640, 0, 640, 44}}));
    EXPECT_FALSE(bar->panelItem("Expand status icons"));
    const auto ids = [&] { return std::set{bar->panels().at(0).id, bar->panels().at(1).id}; };
    const auto kept = ids();

    desktop.setMonitors({{"left", {0, 0, 900, 800}, true}, {"right", {900, 0, 380, 800}}});  // another resolution
    EXPECT_TRUE(becomes({{0, 0, 900, 44}, {900, 0, 380, 44}}));
    desktop.setMonitors({{"left", {640, 300, 640, 500}, true}, {"right", {0, 0, 640, 800}}});  // changed places
    EXPECT_TRUE(becomes({{0, 0, 640, 44}, {640, 300, 640, 44}}));
    EXPECT_TRUE(showsButton("Right", 1));
    EXPECT_EQ(ids(), kept) << "no bar was made anew";
    desktop.setMonitors({{"left", {0, 0, 1280, 800}, true}, {"right", {0, 0, 1280, 800}}});  // one shows the other
    EXPECT_TRUE(eventually([&] { return std::ranges::count(boxes(), Box{0, 0, 1280, 44}) >= 1; }));
    desktop.setMonitors({});
    EXPECT_TRUE(becomes({{0, 0, 1280, 44}}));
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
    EXPECT_TRUE(showsButton("Newcomer")) << "it no longer follows the new manager";
    clickButton("Survivor");
    EXPECT_TRUE(becomesActive(window));
    EXPECT_EQ(bar->buttonTitles().size(), 2U);
}

TEST_F(DesktopChanges, TheStripIsKeptFreeAndTheBarNeverTakesTheFocus) {
    const auto window = client.openAndWait({.title = "Big"});
    startBar();
    ASSERT_TRUE(showsButton("Big"));
    EXPECT_EQ(panelBox(), (Box{0, 800 - 44, 1280, 44}));
    desktop.setMaximized(window, true);
    EXPECT_TRUE(eventually([&] { return desktop.windowBox(window).bottom() > 700; }));
    EXPECT_TRUE(eventually([&] { return desktop.windowBox(window).bottom() <= panelBox().y; }))
        << "it ends at " << desktop.windowBox(window).bottom();

    desktop.activate(window);
    ASSERT_TRUE(becomesActive(window));
    const auto focus = desktop.inputFocus();
    const auto panel = bar->panels().at(0).id;
    pointer.click({panelBox().right() - 300, panelBox().center().y});  // the empty part
    desktop.runFor(200ms);
    desktop.activate(panel);  // even when somebody asks for it
    desktop.runFor(200ms);
    EXPECT_EQ(desktop.inputFocus(), focus);
    EXPECT_EQ(desktop.activeWindow(), window);
}

TEST_F(DesktopChanges, WhatAStartingWindowManagerLostIsAskedAgain) {
    world.manager.stop();
    auto forgetful = std::make_unique<Connection>(world.server.display());
    const uint32_t redirect = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
    xcb_change_window_attributes(*forgetful, forgetful->root(), XCB_CW_EVENT_MASK, &redirect);
    forgetful->sync();

    bar.emplace(world.server, desktop, MORVEL_PROGRAM, Bar::Options{});
    const auto isAsked = [&] {
        while (const auto event = forgetful->next())
            if ((event->response_type & 0x7f) == XCB_MAP_REQUEST) return true;
        return false;
    };
    ASSERT_TRUE(eventually(isAsked));
    EXPECT_TRUE(bar->panels().empty());
    forgetful.reset();  // and with it what it was asked
    world.manager.start();
    EXPECT_TRUE(bar->waitForPanels(1));
    EXPECT_EQ(panelBox(), (Box{0, 800 - 44, 1280, 44}));
}

}  // namespace
}  // namespace morvel::e2e
