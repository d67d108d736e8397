// What other people's programs do wrong, and what must hold in the store nevertheless.
#include "Platform/AXNames.h"
#include "WindowSource/WatchedDesktop.h"

namespace morvel {
namespace {

using namespace std::chrono_literals;

TEST(Faults, ABackgroundApplicationDoesNotTakeTheMark) {
    WatchedDesktop desktop;
    auto& behind = desktop.launch("Behind");
    behind.open({.title = "a"});
    auto& closing = behind.open({.title = "b"});
    auto& front = desktop.launch("Front").open({.title = "front"});
    desktop.start();
    closing.focus();
    desktop.settle();
    front.focus();
    desktop.settle();
    ASSERT_TRUE(desktop.isFocused(front));
    closing.close();
    desktop.settle();
    EXPECT_TRUE(desktop.isFocused(front)) << "its application now has its focus elsewhere, but not the person's";
}

TEST(Faults, AnApplicationLaunchedIntoTheFrontIsMarked) {
    WatchedDesktop desktop;
    desktop.start();
    auto& app = desktop.launch("Quick");
    auto& window = app.open();
    window.focus();
    desktop.settle();
    EXPECT_TRUE(desktop.isFocused(window)) << "it had the focus before it was observed";
}

TEST(Faults, RefusedSubscriptionsLoseNothingInTheEnd) {
    WatchedDesktop desktop;
    desktop.start();
    auto& slow = desktop.launch("Slow");
    slow.refuseSubscriptions(ax::kTitleChanged, 4);
    auto& window = slow.open({.title = "before"});
    desktop.run(2s);
    ASSERT_TRUE(desktop.find(window)) << "found by the second look";
    window.setTitle("after");
    window.setFrame({5, 6, 700, 500});
    desktop.run(2s);
    EXPECT_EQ(desktop.find(window)->title, "after");

    auto& stubborn = desktop.launch("Stubborn");
    stubborn.refuseSubscriptions(ax::kWindowCreated, 7);
    desktop.run(20s);
    auto& late = stubborn.open({.title = "late"});
    desktop.settle();
    ASSERT_FALSE(desktop.find(late)) << "given up after seven calls";
    stubborn.activate();
    desktop.settle();
    EXPECT_TRUE(desktop.find(late)) << "but not for ever";
}

TEST(Faults, AReusedProcessNumberIsAnotherApplication) {
    WatchedDesktop desktop;
    auto& first = desktop.launch("First");
    auto& lost = first.open({.title = "lost"});
    desktop.start();
    first.killSilently();
    auto& second = desktop.launch("Second", {.pid = first.pid()});
    auto& found = second.open({.title = "found"});
    desktop.settle();
    EXPECT_FALSE(desktop.find(lost));
    EXPECT_TRUE(desktop.find(found));
    EXPECT_EQ(desktop.records(), 1u);

    second.killSilently();
    desktop.launch("Helper", {.policy = ActivationPolicy::Accessory, .pid = first.pid()}).open();
    desktop.run(15s);
    EXPECT_EQ(desktop.records(), 0u) << "the number lives on in a process that is none of ours";
}

TEST(Faults, AHungApplicationKeepsItsWindowsAndDelaysNobody) {
    WatchedDesktop desktop;
    auto& hung = desktop.launch("Hung");
    auto& window = hung.open({.title = "before"});
    auto& other = desktop.launch("Other").open({.title = "other"});
    desktop.start();
    hung.hang();
    window.setTitle("after");
    window.focus();
    other.setTitle("still told");
    const int calls = desktop.accessibility().calls(hung.pid());
    desktop.run(30s);
    EXPECT_EQ(desktop.find(window)->title, "before");
    EXPECT_EQ(desktop.find(other)->title, "still told");
    EXPECT_LT(desktop.accessibility().calls(hung.pid()) - calls, 20) << "each call costs the bar a time-out";
    hung.recover();
    desktop.run(10s);
    EXPECT_EQ(desktop.find(window)->title, "after");
    EXPECT_TRUE(desktop.isFocused(window));
}

TEST(Faults, AnApplicationThatAsksWhetherToSaveHoldsNobodyUp) {
    WatchedDesktop desktop;
    auto& app = desktop.launch("Editor");
    auto& window = app.open();
    desktop.start();
    const int calls = desktop.accessibility().calls(app.pid());
    desktop.manager().closeWindow(desktop.idOf(window));
    EXPECT_EQ(desktop.accessibility().calls(app.pid()) - calls, 1) << "for the button, which is pressed without waiting";
    desktop.settle();
    EXPECT_FALSE(desktop.find(window));
}

TEST(Faults, AWindowMayBeGoneBeforeItIsAsked) {
    WatchedDesktop desktop;
    auto& app = desktop.launch("Editor");
    desktop.start();
    for (int i = 0; i < 500; ++i) app.open().close();
    auto& vanished = app.open();
    desktop.settle();
    vanished.vanish();
    desktop.settle();
    EXPECT_TRUE(desktop.find(vanished)) << "nothing told of it yet";
    desktop.run(31s);
    EXPECT_EQ(desktop.records(), 1u);
    EXPECT_TRUE(desktop.isWindowless(app));
}

}  // namespace
}  // namespace morvel
