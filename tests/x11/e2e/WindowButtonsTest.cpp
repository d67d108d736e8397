// One button per window: that they come, follow their windows and go, and what clicks on them do.
#include "BarTest.h"

namespace morvel::e2e {
namespace {

class WindowButtons : public BarTest {};

TEST_F(WindowButtons, StandForTheWindowsOfRealPrograms) {
    auto terminal = world.run({"xterm", "-T", "A terminal", "-e", "sleep 1000"});
    auto clock = world.run({"xclock", "-title", "A clock"});
    auto calculator = world.run({"galculator"});
    ASSERT_TRUE(eventually([&] { return desktop.windowTitled("A clock") && desktop.windowTitled("galculator"); }));
    startBar();
    for (const char* title : {"A terminal", "A clock", "galculator"}) EXPECT_TRUE(showsButton(title));

    auto editor = world.run({"mousepad", "--disable-server"});
    ASSERT_TRUE(eventually([&] { return desktop.windowsOf(editor.pid()).size() == 1; }));
    const auto editorTitle = [&] { return desktop.title(desktop.windowsOf(editor.pid()).at(0)); };
    EXPECT_TRUE(eventually([&] { return bar->button(editorTitle()).has_value(); }));
    EXPECT_EQ(bar->buttonTitles().size(), 4U);

    Box last;
    for (const auto& title : bar->buttonTitles()) {
        const Box frame = bar->button(title)->frame;
        EXPECT_TRUE(panelBox().contains(frame)) << title << " at " << frame;
        EXPECT_GE(frame.x, last.right()) << title << " overlaps its neighbour";
        EXPECT_GT(world.shoot().colorsIn({frame.x + 6, frame.y + 7, 18, 18}), 4) << title << " shows no icon";
        last = frame;
    }
    clock.kill();
    EXPECT_TRUE(lacksButton("A clock"));
    // The server tells of the window before the system tells of the process; for that moment it shows as a tile.
    EXPECT_TRUE(eventually([&] { return bar->buttonTitles().size() == 3; })) << "a dead program left something behind";
}

TEST_F(WindowButtons, FollowTitles) {
    const auto window = client.openAndWait({.title = "Draft"});
    startBar();
    ASSERT_TRUE(showsButton("Draft"));
    const auto before = world.shoot();
    const Box frame = bar->button("Draft")->frame;
    client.setTitle(window, "R\u00e9sum\u00e9 \u2014 \u65e5\u672c\u8a9e");
    EXPECT_TRUE(showsButton("R\u00e9sum\u00e9 \u2014 \u65e5\u672c\u8a9e"));
    EXPECT_TRUE(lacksButton("Draft"));
    EXPECT_EQ(bar->buttonTitles().size(), 1U);
    EXPECT_TRUE(eventually([&] { return !world.shoot().differenceTo(before, frame).isEmpty(); })) << "nothing drawn";
}

TEST_F(WindowButtons, MarkTheFocusedWindow) {
    const auto first = client.openAndWait({.title = "First"});
    const auto second = client.openAndWait({.title = "Second", .box = {600, 90, 320, 200}});
    startBar();
    ASSERT_TRUE(showsButton("First"));
    ASSERT_TRUE(showsButton("Second"));
    pointer.moveTo({640, 500});
    constexpr int kClearly = 12;
    desktop.activate(first);
    EXPECT_TRUE(eventually([&] { return blueness("First") > blueness("Second") + kClearly; }));
    desktop.activate(second);
    EXPECT_TRUE(eventually([&] { return blueness("Second") > blueness("First") + kClearly; }));
    desktop.minimize(second);
    desktop.minimize(first);
    EXPECT_TRUE(eventually([&] { return std::abs(blueness("Second") - blueness("First")) < 3; }))
        << "nothing has the focus, but a button says so";
}

TEST_F(WindowButtons, MarkAtOnceWhatHasTheFocusInTheThemeAskedFor) {
    const auto first = client.openAndWait({.title = "First"});
    client.openAndWait({.title = "Second", .box = {600, 90, 320, 200}});
    desktop.activate(first);
    ASSERT_TRUE(eventually([&] { return desktop.activeWindow() == first; }));
    startBar({.defaults = R"({"theme": "dark", "barBackgroundStyle": "opaque"})"});
    ASSERT_TRUE(showsButton("Second"));
    constexpr int kClearly = 12;
    EXPECT_TRUE(eventually([&] { return blueness("First") > blueness("Second") + kClearly; }));
    const Box panel = panelBox();
    const auto isDark = [&](const Rgb& color) { return color.red + color.green + color.blue < 3 * 64; };
    EXPECT_TRUE(eventually([&] { return isDark(world.shoot().average({panel.right() - 60, panel.y + 10, 40, 20})); }));
}

TEST_F(WindowButtons, ClickRaisesThenMinimizesThenRestores) {
    const auto back = client.openAndWait({.title = "Back", .box = {200, 150, 320, 200}});
    const auto front = client.openAndWait({.title = "Front", .box = {220, 170, 320, 200}});
    startBar();
    ASSERT_TRUE(becomesActive(front));
    clickButton("Back");
    EXPECT_TRUE(becomesActive(back));
    EXPECT_TRUE(eventually([&] { return desktop.isAbove(back, front); }));
    clickButton("Back");
    EXPECT_TRUE(becomesMinimized(back));
    EXPECT_TRUE(showsButton("Back")) << "a minimized window keeps its button";
    clickButton("Back");
    EXPECT_TRUE(becomesActive(back));
    EXPECT_TRUE(desktop.connection().isViewable(back));
    EXPECT_FALSE(desktop.isMinimized(front)) << "the other window is left alone";
}

TEST_F(WindowButtons, GoWithTheirWindows) {
    const auto closed = client.openAndWait({.title = "Closed"});
    const auto destroyed = client.openAndWait({.title = "Destroyed"});
    const auto unmapped = client.openAndWait({.title = "Unmapped"});
    client.openAndWait({.title = "Kept"});
    startBar();
    for (const char* title : {"Closed", "Destroyed", "Unmapped", "Kept"}) ASSERT_TRUE(showsButton(title));
    desktop.close(closed);
    client.destroy(destroyed);
    client.unmap(unmapped);
    for (const char* title : {"Closed", "Destroyed", "Unmapped"}) EXPECT_TRUE(lacksButton(title));
    EXPECT_EQ(bar->buttonTitles(), std::vector<std::string>{"Kept"});
}

TEST_F(WindowButtons, LeaveADimmedTileWhileTheProcessLives) {
    auto puppet = runPuppet("Lingerer", {"Only window"});
    startBar();
    ASSERT_TRUE(showsButton("Only window"));
    desktop.close(desktop.windowTitled("Only window").value());
    ASSERT_TRUE(showsButton("no window open"));
    EXPECT_NEAR(bar->button("no window open")->alpha, 0.6, 0.01);
    EXPECT_FALSE(bar->button("Only window"));

    puppet.kill();
    EXPECT_TRUE(lacksButton("no window open")) << "the process is dead";
}

TEST_F(WindowButtons, IgnoreWhatIsNoWindowForPeople) {
    client.openAndWait({.title = "Ordinary"});
    client.openAndWait({.title = "Skipped", .states = {"_NET_WM_STATE_SKIP_TASKBAR"}});
    client.openAndWait({.title = "A dock", .type = "_NET_WM_WINDOW_TYPE_DOCK"});
    client.openAndWait({.title = "A splash", .type = "_NET_WM_WINDOW_TYPE_SPLASH"});
    startBar();
    ASSERT_TRUE(showsButton("Ordinary"));
    client.openAndWait({.title = "Later"});
    ASSERT_TRUE(showsButton("Later"));
    EXPECT_EQ(bar->buttonTitles().size(), 2U);
}

}  // namespace
}  // namespace morvel::e2e
