// One button per window: that they come, follow their windows and go, and what clicks on them do.
#include "BarTest.h"

namespace morvel::e2e {
namespace {

class WindowButtons : public BarTest {};

TEST_F(WindowButtons, StandForTheWindowsOfRealPrograms) {
    auto terminal = world.run({"xterm", "-T", "A terminal", "-e", "sleep 1000"});
    auto clock = world.run({"xclock", "-title", "A clock"});
    auto calculator = world.run({"galculator"});
    awaitWindow("A clock");
    awaitWindow("galculator");
    startBar();
    EXPECT_TRUE(showsButtons({"A terminal", "A clock", "galculator"}));
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

TEST_F(WindowButtons, ComeAndGoWithTheWindowsThatPeopleWorkWith) {
    auto puppet = runPuppet("Lingerer", {"Only window"});
    const auto closed = client.openAndWait({.title = "Closed"});
    const auto destroyed = client.openAndWait({.title = "Destroyed"});
    const auto unmapped = client.openAndWait({.title = "Unmapped"});
    client.openAndWait({.title = "Skipped", .states = {"_NET_WM_STATE_SKIP_TASKBAR"}});
    client.openAndWait({.title = "A dock", .type = "_NET_WM_WINDOW_TYPE_DOCK"});
    client.openAndWait({.title = "A splash", .type = "_NET_WM_WINDOW_TYPE_SPLASH"});
    startBar({.defaults = kNeverGrouped});
    ASSERT_TRUE(showsButtons({"Only window", "Closed", "Destroyed", "Unmapped"}));

    const auto later = client.openAndWait({.title = "Later"});
    desktop.close(closed);
    client.destroy(destroyed);
    client.unmap(unmapped);
    desktop.close(awaitWindow("Only window"));
    ASSERT_TRUE(showsButtons({"Later", "no window open"}));
    EXPECT_NEAR(bar->button("no window open")->alpha, 0.6, 0.01) << "its process lives";
    client.setTitle(later, "R\u00e9sum\u00e9 \u2014 \u65e5\u672c\u8a9e");
    puppet.kill();
    EXPECT_TRUE(showsButtons({"R\u00e9sum\u00e9 \u2014 \u65e5\u672c\u8a9e"})) << "the other's process is dead";
}

TEST_F(WindowButtons, MarkTheFocusAndRaiseMinimizeAndRestore) {
    const auto back = client.openAndWait({.title = "Back", .box = {200, 150, 320, 200}});
    const auto front = client.openAndWait({.title = "Front", .box = {220, 170, 320, 200}});
    desktop.activate(back);
    ASSERT_TRUE(becomesActive(back));
    constexpr Spot kAside{640, 500};  // what the pointer is over is highlighted too
    pointer.moveTo(kAside);
    startBar({.defaults = R"({"theme": "dark", "barBackgroundStyle": "opaque"})"});
    ASSERT_TRUE(showsButtons({"Back", "Front"}));
    EXPECT_TRUE(isMarked("Back", "Front")) << "at once";
    const Box panel = panelBox();
    const auto isDark = [](const Rgb& color) { return color.red + color.green + color.blue < 3 * 64; };
    EXPECT_TRUE(eventually([&] { return isDark(world.shoot().average({panel.right() - 60, panel.y + 10, 40, 20})); }));

    clickButton("Front");
    EXPECT_TRUE(becomesActive(front));
    EXPECT_TRUE(eventually([&] { return desktop.isAbove(front, back); }));
    pointer.moveTo(kAside);
    EXPECT_TRUE(isMarked("Front", "Back"));
    clickButton("Front");
    EXPECT_TRUE(becomesMinimized(front));
    EXPECT_TRUE(showsButtons({"Back", "Front"})) << "a minimized window keeps its button";
    EXPECT_FALSE(desktop.isMinimized(back)) << "the other window is left alone";
    clickButton("Front");
    EXPECT_TRUE(becomesActive(front));
    EXPECT_TRUE(desktop.connection().isViewable(front));

    pointer.moveTo(kAside);
    desktop.minimize(front);
    desktop.minimize(back);
    EXPECT_TRUE(eventually([&] { return std::abs(blueness("Back") - blueness("Front")) < 3; }))
        << "nothing has the focus, but a button says so";
}

}  // namespace
}  // namespace morvel::e2e
