// What the bar costs while people do something else: wake-ups, and how much it draws.
#include "BarTest.h"
#include "harness/DamageWatch.h"

namespace morvel::e2e {
namespace {

class Cost : public BarTest {
protected:
    /// What the panel has drawn, on the root, once it draws no more.
    Box drawn(DamageWatch& watch) {
        Box all;
        EXPECT_TRUE(eventually([&] { return !(all = all.joined(watch.takeExtents())).isEmpty(); }));
        desktop.runFor(200ms);
        all = all.joined(watch.takeExtents());
        return {all.x + panelBox().x, all.y + panelBox().y, all.width, all.height};
    }
};

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

TEST_F(Cost, ATitleChangeAndTheHandDrawOnlyTheButtonsTheyConcern) {
    for (const char* title : {"One", "Two", "Three", "Four"}) client.openAndWait({.title = title});
    startBar();
    ASSERT_TRUE(showsButtons({"One", "Two", "Three", "Four"}));
    pointer.moveTo({640, 300});
    const Box button = bar->button("Two")->frame;
    DamageWatch watch(world.server, desktop, bar->panels().at(0).id);
    desktop.runFor(1s);  // focus and icons have settled
    watch.take();
    client.setTitle(awaitWindow("Two"), "Two, changed");
    ASSERT_TRUE(showsButton("Two, changed"));
    const Box forTitle = drawn(watch);
    EXPECT_TRUE(button.contains(forTitle)) << "drew " << forTitle << " for a button at " << button;
    client.setTitle(awaitWindow("Three"), "Three");  // the same as before
    desktop.runFor(300ms);
    EXPECT_TRUE(watch.take().empty()) << "drew for nothing";

    const Box from = bar->button("Two, changed")->frame;
    const Box to = bar->button("Three")->frame;
    pointer.moveTo(from.center());
    desktop.runFor(1s);
    watch.take();
    pointer.moveTo(to.center());
    const Box forHand = drawn(watch);
    EXPECT_TRUE(from.joined(to).contains(forHand)) << "drew " << forHand;
}

}  // namespace
}  // namespace morvel::e2e
