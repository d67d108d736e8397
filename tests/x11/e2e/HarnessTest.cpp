// The harness against a real window manager: what it reports must be so, or no other end-to-end test means anything.
#include <gtest/gtest.h>
#include <signal.h>

#include <set>

#include "harness/Bar.h"
#include "harness/DamageWatch.h"
#include "harness/VirtualDesktop.h"

namespace morvel::e2e {
namespace {

TEST(Harness, ShowsManagedWindowsAndTheirPixels) {
    VirtualDesktop world;
    Client client(world.server, world.desktop);
    const auto window = client.openAndWait({.title = "Blue", .box = {100, 100, 300, 200}, .color = 0x1020E0});
    EXPECT_EQ(world.desktop.windowTitled("Blue"), window);
    EXPECT_TRUE(world.desktop.waitUntil([&] { return world.desktop.activeWindow() == window; }));
    const Box box = world.desktop.windowBox(window);
    EXPECT_EQ(box.width, 300);
    EXPECT_TRUE(world.desktop.waitUntil([&] { return world.shoot().average(box) == Rgb{0x10, 0x20, 0xE0}; }));
    EXPECT_EQ(world.shoot().colorsIn(box), 1);

    const auto before = world.shoot();
    DamageWatch watch(world.server, world.desktop, window);
    const uint32_t white = 0xFFFFFF;
    xcb_change_window_attributes(client.connection(), window, XCB_CW_BACK_PIXEL, &white);
    xcb_clear_area(client.connection(), 0, window, 10, 20, 30, 40);
    client.connection().sync();
    EXPECT_EQ(watch.takeExtents(), (Box{10, 20, 30, 40}));
    EXPECT_EQ(world.shoot().differenceTo(before, world.desktop.box()), (Box{box.x + 10, box.y + 20, 30, 40}));
}

TEST(Harness, DeliversClicksAndSteersWindows) {
    VirtualDesktop world;
    auto& desktop = world.desktop;
    Client client(world.server, desktop);
    const auto first = client.openAndWait({.title = "First", .box = {50, 50, 300, 200}});
    const auto second = client.openAndWait({.title = "Second", .box = {500, 50, 300, 200}});
    ASSERT_TRUE(desktop.waitUntil([&] { return desktop.activeWindow() == second; }));

    world.pointer.click(desktop.windowBox(first).center());
    EXPECT_TRUE(desktop.waitUntil([&] { return client.wasClicked(); }));
    EXPECT_TRUE(desktop.waitUntil([&] { return desktop.activeWindow() == first && desktop.isAbove(first, second); }));

    desktop.minimize(first);
    EXPECT_TRUE(desktop.waitUntil([&] { return desktop.isMinimized(first); }));
    desktop.activate(first);
    EXPECT_TRUE(desktop.waitUntil([&] { return !desktop.isMinimized(first) && desktop.activeWindow() == first; }));

    desktop.place(first, {40, 300, 222, 111});
    EXPECT_TRUE(desktop.waitUntil([&] { return desktop.windowBox(first) == Box{40, 300, 222, 111}; }));

    desktop.showWorkspace(1);
    EXPECT_TRUE(desktop.waitUntil([&] { return !desktop.connection().isViewable(first); }));
    desktop.sendToWorkspace(second, 1);
    EXPECT_TRUE(desktop.waitUntil([&] { return desktop.connection().isViewable(second); }));

    desktop.close(second);
    EXPECT_TRUE(desktop.waitUntil([&] { return !desktop.windowTitled("Second"); }));
}

TEST(Harness, DefinesMonitorsAndTellsOthers) {
    VirtualDesktop world;
    ASSERT_EQ(world.desktop.monitors().size(), 1U);
    Connection other(world.server.display());
    const uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(other, other.root(), XCB_CW_EVENT_MASK, &mask);
    other.sync();

    const Box left{0, 0, 640, 800};
    const Box right{640, 0, 640, 800};
    world.desktop.setMonitors({{"left", left, true}, {"right", right}});
    std::set<std::string> names;
    for (const auto& monitor : world.desktop.monitors()) {
        names.insert(monitor.name);
        EXPECT_EQ(monitor.box, monitor.name == "left" ? left : right);
        EXPECT_EQ(monitor.primary, monitor.name == "left");
    }
    EXPECT_EQ(names, (std::set<std::string>{"left", "right"}));
    other.sync();
    EXPECT_TRUE(other.next()) << "nobody could notice the new monitors";

    world.desktop.setMonitors({});
    ASSERT_EQ(world.desktop.monitors().size(), 1U);
    EXPECT_EQ(world.desktop.monitors()[0].box, world.desktop.box());
}

TEST(Harness, KeepsWindowsWhenTheManagerRestarts) {
    VirtualDesktop world;
    Client client(world.server, world.desktop);
    const auto window = client.openAndWait({.title = "Survivor"});
    world.manager.stop();
    world.manager.start();
    EXPECT_TRUE(world.desktop.waitUntil([&] { return world.desktop.windowTitled("Survivor") == window; }));
}

TEST(Harness, RunsRealProgramsAndEndsThem) {
    EXPECT_THROW(Program({"/nowhere/at-all"}, {}), std::runtime_error);
    pid_t server = 0;
    {
        VirtualDesktop world;
        auto clock = world.run({"xterm", "-T", "A terminal", "-e", "sleep 1000"});
        EXPECT_TRUE(world.desktop.waitUntil([&] { return world.desktop.windowTitled("A terminal").has_value(); }));
        EXPECT_EQ(world.desktop.windowsOf(clock.pid()).size(), 1U);
        EXPECT_TRUE(clock.isRunning());
        EXPECT_GT(clock.voluntarySwitches(), 0);
        server = clock.pid();
    }
    EXPECT_EQ(::kill(server, 0), -1) << "a program outlived its desktop";
}

TEST(Harness, ReadsWhatABarSaysItShows) {
    VirtualDesktop world;
    Client client(world.server, world.desktop);
    Bar bar(world.server, world.desktop, "xclock", {.defaults = "{}"});  // any program: the client plays the bar
    EXPECT_TRUE(std::filesystem::exists(bar.defaultsFile()));
    const auto dock = client.openAndWait({.box = {0, 756, 1280, 44}, .type = "_NET_WM_WINDOW_TYPE_DOCK"});
    EXPECT_TRUE(bar.panels().empty()) << "it says nothing, so it is not the bar's";
    const auto say = [&](std::string_view views) {
        client.connection().setBytes(dock, "_MORVEL_VIEWS", "UTF8_STRING", views);
        client.connection().sync();
    };
    say(R"([{"label": "B", "tooltip": "App \u2014 B", "frame": [200, 760, 150, 32], "hidden": false, "alpha": 0.6},
            {"label": "A", "tooltip": "App \u2014 A", "frame": [40, 760.5, 150, 32], "hidden": false, "alpha": 1},
            {"label": "C", "tooltip": "App \u2014 C", "frame": [0, 0, 1, 1], "hidden": true, "alpha": 1},
            {"label": "App, 7 windows", "tooltip": "App", "frame": [400, 760, 40, 32], "hidden": false, "alpha": 1}])");
    ASSERT_TRUE(bar.waitForPanels(1));
    EXPECT_EQ(bar.panels()[0].box, (Box{0, 756, 1280, 44}));
    EXPECT_EQ(bar.buttonTitles(), (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(bar.button("A")->frame, (Box{40, 760, 150, 32}));
    EXPECT_EQ(bar.button("B", 0)->alpha, 0.6);
    EXPECT_FALSE(bar.button("B", 1)) << "there is one panel";
    EXPECT_FALSE(bar.button("C")) << "it is hidden";
    EXPECT_EQ(bar.group("App")->frame.x, 400);
    EXPECT_FALSE(bar.popupItem("A")) << "a panel is no menu";
    for (const char* nonsense : {"", "[", "{}", "[{\"frame\": [1]}]"}) {
        say(nonsense);
        ASSERT_EQ(bar.panels().size(), 1U);
        EXPECT_TRUE(bar.panels()[0].views.empty()) << nonsense;
    }
}

}  // namespace
}  // namespace morvel::e2e
