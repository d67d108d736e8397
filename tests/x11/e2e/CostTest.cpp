// What the bar costs while people do something else: wake-ups, and how much it draws.
#include "BarTest.h"
#include "harness/DamageWatch.h"

namespace morvel::e2e {
namespace {

class Cost : public BarTest {};

TEST_F(Cost, IdleWithFiftyWindowsItSleeps) {
    for (int i = 0; i < 50; ++i) client.open({.title = "Window " + std::to_string(i)});
    startBar({.defaults = R"({"groupingMode": "never", "updaterAutoCheckEnabled": false})"});
    ASSERT_TRUE(desktop.waitUntil([&] { return bar->buttonTitles().size() >= 50; }, 30s));
    pointer.moveTo({640, 300});
    // The sweep that waits longest after a start does its first work within this time.
    desktop.runFor(2500ms);
    const long before = bar->program().voluntarySwitches();
    desktop.runFor(3000ms);
    EXPECT_LE(bar->program().voluntarySwitches() - before, 6) << "something polls";
}

TEST_F(Cost, ATitleChangeDrawsOnlyItsButton) {
    for (const char* title : {"One", "Two", "Three", "Four"}) client.openAndWait({.title = title});
    startBar();
    for (const char* title : {"One", "Two", "Three", "Four"}) ASSERT_TRUE(showsButton(title));
    pointer.moveTo({640, 300});
    const auto window = desktop.windowTitled("Two").value();
    const Box panel = panelBox();
    const Box button = bar->button("Two")->frame;
    DamageWatch watch(world.server, desktop, bar->panels().at(0).id);
    desktop.runFor(1s);  // focus and icons have settled
    watch.take();

    client.setTitle(window, "Two, changed");
    ASSERT_TRUE(showsButton("Two, changed"));
    Box drawn;
    EXPECT_TRUE(eventually([&] { return !(drawn = drawn.joined(watch.takeExtents())).isEmpty(); }));
    desktop.runFor(200ms);
    drawn = drawn.joined(watch.takeExtents());
    drawn.x += panel.x;
    drawn.y += panel.y;
    EXPECT_TRUE(button.contains(drawn)) << "drew " << drawn << " for a button at " << button;

    client.setTitle(desktop.windowTitled("Three").value(), "Three");  // the same as before
    desktop.runFor(300ms);
    EXPECT_TRUE(watch.take().empty()) << "drew for nothing";
}

TEST_F(Cost, HoverDrawsOnlyTheButtonsItConcerns) {
    for (const char* title : {"One", "Two", "Three"}) client.openAndWait({.title = title});
    startBar();
    for (const char* title : {"One", "Two", "Three"}) ASSERT_TRUE(showsButton(title));
    const Box panel = panelBox();
    const Box from = bar->button("One")->frame;
    const Box to = bar->button("Two")->frame;
    pointer.moveTo(from.center());
    DamageWatch watch(world.server, desktop, bar->panels().at(0).id);
    desktop.runFor(1s);
    watch.take();
    pointer.moveTo(to.center());
    Box drawn;
    EXPECT_TRUE(eventually([&] { return !(drawn = drawn.joined(watch.takeExtents())).isEmpty(); }));
    desktop.runFor(200ms);
    drawn = drawn.joined(watch.takeExtents());
    drawn.x += panel.x;
    drawn.y += panel.y;
    EXPECT_TRUE(from.joined(to).contains(drawn)) << "drew " << drawn;
}

}  // namespace
}  // namespace morvel::e2e
