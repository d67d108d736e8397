// The harness against a real window manager: what it reports must be so, or no other end-to-end test means anything.
#include <gtest/gtest.h>

#include "harness/DamageWatch.h"
#include "harness/VirtualDesktop.h"

namespace morvel::e2e {
namespace {

TEST(Harness, SeesWindowsAndWhatIsDrawn) {
    VirtualDesktop world;
    Client client(world.server, world.desktop);
    const auto window = client.openAndWait({.title = "Blue", .box = {100, 100, 300, 200}, .color = 0x1020E0});
    EXPECT_EQ(world.desktop.windowTitled("Blue"), window);
    EXPECT_FALSE(world.desktop.waitUntil([] { return false; }, 1ms));
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

TEST(Harness, RunsRealProgramsAndEndsThem) {
    EXPECT_THROW(Program({"/nowhere/at-all"}, {}), std::runtime_error);
    pid_t pid = 0;
    {
        VirtualDesktop world;
        auto terminal = world.run({"xterm", "-T", "A terminal", "-e", "sleep 1000"});
        pid = terminal.pid();
        EXPECT_TRUE(world.desktop.waitUntil([&] { return world.desktop.windowsOf(pid).size() == 1; }));
        EXPECT_GT(terminal.voluntarySwitches(), 0);
    }
    EXPECT_EQ(::kill(pid, 0), -1) << "a program outlived its desktop";
}

}  // namespace
}  // namespace morvel::e2e
