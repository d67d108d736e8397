// Stories of applications that come, go, hang and die, told by what the store then holds.
#include <gtest/gtest.h>

#include "Platform/AXNames.h"
#include "WindowSource/WatchedDesktop.h"

namespace morvel {
namespace {

using namespace std::chrono_literals;
using sim::SimApp;
using sim::SimWindow;

TEST(Observing, AWindowsLifeFromTheFirstToTheLast) {
    WatchedDesktop desktop(sim::twoDisplays());
    SimApp& app = desktop.launch("Editor");
    desktop.start();
    EXPECT_TRUE(desktop.isWindowless(app));
    SimWindow& first = app.open({.title = "One"});
    SimWindow& second = app.open({.title = "Two"});
    second.focus();
    desktop.settle();
    EXPECT_FALSE(desktop.isWindowless(app));
    EXPECT_EQ(desktop.find(first)->title, "One");
    EXPECT_TRUE(desktop.isFocused(second));

    const WindowID id = desktop.idOf(second);
    desktop.manager().clickWindow(id);
    desktop.settle();
    EXPECT_TRUE(second.isMinimized()) << "a click on the front window";
    EXPECT_TRUE(desktop.isFocused(first)) << "its application gave the focus to the other one";
    desktop.manager().clickWindow(id);
    desktop.settle();
    EXPECT_FALSE(second.isMinimized()) << "a second click restores it";
    EXPECT_TRUE(desktop.isFocused(second));

    desktop.manager().moveWindow(id, desktop.screens().list.at(1));
    desktop.settle();
    EXPECT_EQ(desktop.find(second)->frame, second.frame());
    EXPECT_EQ(second.frame().center(), (Point<AXSpace>{1440 + 960, 900 - 540}));

    desktop.manager().closeWindow(id);
    desktop.manager().closeWindow(desktop.idOf(first));
    desktop.settle();
    EXPECT_EQ(desktop.records(), 1u);
    EXPECT_TRUE(desktop.isWindowless(app));
    EXPECT_FALSE(desktop.store().focusedID().value());
    app.quit();
    desktop.settle();
    EXPECT_EQ(desktop.records(), 0u);
}

TEST(Observing, LateFirstWindowsAreFoundBySecondLook) {
    WatchedDesktop desktop;
    desktop.start();
    SimApp& app = desktop.launch("Editor");
    app.refuseSubscriptions(ax::kWindowCreated, 7);  // more than ever retried
    desktop.settle();
    SimWindow& window = app.open();
    desktop.run(1499ms);
    EXPECT_TRUE(desktop.isWindowless(app));
    desktop.run(1ms);
    ASSERT_TRUE(desktop.find(window));
    SimWindow& unseen = app.open();
    desktop.run(60s);
    EXPECT_FALSE(desktop.find(unseen)) << "nobody tells of new windows";
    app.activate();
    desktop.settle();
    EXPECT_TRUE(desktop.find(unseen)) << "a refusal is not final: activation tries again";
    SimWindow& later = app.open();
    desktop.settle();
    EXPECT_TRUE(desktop.find(later));
    EXPECT_EQ(desktop.accessibility().repeatedSubscriptions, 0);

    SimApp& slow = desktop.launch("Slow");
    slow.refuseSubscriptions(ax::kTitleChanged, 4);
    SimWindow& renamed = slow.open({.title = "before"});
    desktop.run(2s);
    ASSERT_TRUE(desktop.find(renamed));
    renamed.setTitle("after");
    desktop.run(2s);
    EXPECT_EQ(desktop.find(renamed)->title, "after") << "what was refused first is observed in the end";
}

TEST(Observing, TheMarkIsWhereThePersonWorks) {
    WatchedDesktop desktop;
    SimApp& behind = desktop.launch("Behind");
    behind.open();
    SimWindow& closing = behind.open();
    SimWindow& front = desktop.launch("Front").open();
    desktop.start();
    closing.focus();
    desktop.settle();
    front.focus();
    desktop.settle();
    closing.close();
    desktop.settle();
    EXPECT_TRUE(desktop.isFocused(front)) << "the other application now has its focus elsewhere, but not the person's";
    SimWindow& quick = desktop.launch("Quick").open();
    quick.focus();
    desktop.settle();
    EXPECT_TRUE(desktop.isFocused(quick)) << "it had the focus before it was observed";
}

TEST(Observing, WhatDiesSilentlyIsSweptWithin15Seconds) {
    WatchedDesktop desktop;
    SimApp& dying = desktop.launch("Dying");
    dying.open().focus();
    dying.open();
    SimApp& living = desktop.launch("Living");
    SimWindow& kept = living.open();
    SimWindow& closed = living.open();
    SimWindow& dropped = living.open();
    desktop.start();
    ASSERT_EQ(desktop.records(), 5u);
    dying.killSilently();
    closed.vanish();
    desktop.windowServer().unlist(dropped.number());  // its element still answers
    desktop.run(14999ms);
    EXPECT_EQ(desktop.records(), 5u);
    desktop.run(1ms);
    EXPECT_TRUE(desktop.store().snapshot(dying.pid()).empty());
    EXPECT_FALSE(desktop.find(closed)) << "its element is dead";
    EXPECT_TRUE(desktop.find(dropped)) << "the list may be short for a moment";
    desktop.run(15s);
    EXPECT_FALSE(desktop.find(dropped));
    EXPECT_TRUE(desktop.find(kept));
}

TEST(Observing, AReusedProcessNumberIsANewApplication) {
    WatchedDesktop desktop;
    SimApp& before = desktop.launch("Before");
    before.open();
    desktop.start();
    const RunningApplication record = before.record();
    before.killSilently();
    SimApp& after = desktop.launch("After", {.pid = before.pid()});
    SimWindow& fresh = after.open();
    desktop.settle();
    ASSERT_TRUE(desktop.find(fresh));
    desktop.workspace().terminated.emit(record);
    EXPECT_TRUE(desktop.find(fresh)) << "the late notice is about the one before";
    EXPECT_EQ(desktop.records(), 1u);
    after.killSilently();
    desktop.launch("Helper", {.policy = ActivationPolicy::Accessory, .pid = before.pid()}).open();
    desktop.run(15s);
    EXPECT_EQ(desktop.records(), 0u) << "the number lives on in a process that is none of ours";
}

TEST(Observing, AHungApplicationKeepsItsWindowsAndCostsNobodyTime) {
    WatchedDesktop desktop;
    SimApp& hung = desktop.launch("Hung");
    SimWindow& window = hung.open({.title = "before"});
    SimWindow& unknown = hung.open();
    unknown.failReading(ax::kSize);
    SimApp& other = desktop.launch("Other");
    desktop.start();
    window.focus();
    desktop.settle();
    hung.hang();
    unknown.healReading(ax::kSize);
    const int callsBefore = desktop.accessibility().calls(hung.pid());
    unknown.focus();
    window.setTitle("after");
    for (int i = 0; i < 100; ++i) window.setFrame({double(i), 0, 300, 200});
    desktop.run(60s);
    EXPECT_EQ(desktop.find(window)->title, "before");
    EXPECT_TRUE(desktop.isFocused(window)) << "silence does not move the focus";
    EXPECT_LT(desktop.accessibility().calls(hung.pid()) - callsBefore, 15) << "each is a time-out for all of us";
    SimWindow& elsewhere = other.open();
    desktop.settle();
    EXPECT_TRUE(desktop.find(elsewhere)) << "the others do not wait";

    hung.recover();
    desktop.run(8s);
    EXPECT_EQ(desktop.find(window)->title, "after");
    EXPECT_EQ(desktop.find(window)->frame, window.frame());
    ASSERT_TRUE(desktop.find(unknown));
    EXPECT_TRUE(desktop.isFocused(unknown));

    hung.hang();
    desktop.journal().clear();
    const int calls = desktop.accessibility().calls(hung.pid());
    desktop.manager().clickWindow(desktop.idOf(window));
    EXPECT_EQ(desktop.journal().texts(), std::vector<std::string>{"activate"});
    EXPECT_EQ(desktop.accessibility().calls(hung.pid()) - calls, 1);
}

TEST(Observing, AnApplicationThatHangsFromTheStartIsObservedOnceItAnswers) {
    WatchedDesktop desktop;
    SimApp& app = desktop.launch("Slow");
    SimWindow& window = app.open();
    app.hang();
    desktop.start();
    EXPECT_TRUE(desktop.isWindowless(app));
    EXPECT_LT(desktop.accessibility().calls(app.pid()), 3);
    desktop.run(60s);
    app.recover();
    desktop.run(8s);
    EXPECT_TRUE(desktop.find(window));
    SimWindow& next = app.open();
    desktop.settle();
    EXPECT_TRUE(desktop.find(next)) << "its notices come too";
}

TEST(Observing, WindowsOfOtherSpacesComeToLightAndStay) {
    WatchedDesktop desktop;
    const SpaceID first = *desktop.currentSpace(DisplayID{1});
    const SpaceID second = desktop.addSpace(DisplayID{1});
    SimApp& app = desktop.launch("Editor");
    SimWindow& here = app.open();
    SimWindow& there = app.open({.space = second});
    auto& attributes = desktop.accessibility().at(desktop.accessibility().applicationID(app.pid())).attributes;
    const auto show = [&](const SimWindow& window) {
        attributes.insert_or_assign("AXWindows", std::vector{desktop.accessibility().handle(window.element())});
    };
    show(here);
    desktop.start();
    EXPECT_FALSE(desktop.find(there));
    show(there);
    desktop.switchSpace(DisplayID{1}, second);
    desktop.settle();
    EXPECT_TRUE(desktop.find(there));
    EXPECT_TRUE(desktop.find(here)) << "not listed is not closed";
    attributes.insert_or_assign("AXWindows", std::vector<AXElement>{});
    desktop.switchSpace(DisplayID{1}, first);
    desktop.run(60s);
    EXPECT_EQ(desktop.records(), 2u) << "a busy system answers with no windows at all";
    EXPECT_EQ(desktop.accessibility().repeatedSubscriptions, 0);
}

TEST(Observing, WindowsOlderThanTheObserverAreWatchedOneByOne) {
    WatchedDesktop desktop;
    SimApp& app = desktop.launch("Editor");
    SimWindow& older = app.open();
    app.refuseSubscriptions(ax::kUIElementDestroyed, 100);  // so that only a window's own subscription can tell
    desktop.start();
    desktop.run(1500ms);
    ASSERT_TRUE(desktop.find(older));
    app.open();
    desktop.settle();
    EXPECT_EQ(desktop.accessibility().subscriptions(app.pid()), 8u) << "seven names, and one window";
    older.close();
    desktop.settle();
    EXPECT_FALSE(desktop.find(older));
}

TEST(Observing, AStormOfWindowsCostsAFewQuestionsEach) {
    constexpr int kWindows = 500;
    WatchedDesktop desktop;
    SimApp& app = desktop.launch("Storm");
    desktop.start();
    const int before = desktop.accessibility().calls(app.pid());
    for (int i = 0; i < kWindows; ++i) app.open();
    desktop.settle();
    EXPECT_EQ(desktop.records(), size_t(kWindows));
    EXPECT_LE(desktop.accessibility().calls(app.pid()) - before, 10 * kWindows);
    int publications = 0;
    const auto counting = desktop.store().windows().subscribe([&](const auto&) { ++publications; }, Current::Skip);
    for (const auto& window : app.windows()) window->setTitle("a");
    desktop.run(100ms);
    for (const auto& window : app.windows()) window->setTitle("b");
    desktop.run(199ms);
    EXPECT_EQ(publications, 0) << "the burst goes on";
    desktop.run(1ms);
    EXPECT_EQ(publications, kWindows);
    for (const auto& window : app.windows()) window->close();
    for (int i = 0; i < kWindows; ++i) app.open().close();  // gone before they are asked
    desktop.settle();
    EXPECT_EQ(desktop.records(), 1u);
    EXPECT_TRUE(desktop.isWindowless(app));
}

TEST(Observing, AMissingWindowIsExplainedOnRequest) {
    WatchedDesktop desktop;
    desktop.log().wantsDebug = true;
    SimApp& app = desktop.launch("Painter");
    app.open({.title = "Tools", .layer = 3});
    app.open({.title = "Alert", .subrole = "AXDialog", .hasCloseButton = false});
    SimWindow& odd = app.open({.title = "Odd"});
    odd.failReading(ax::kSize, AXError::Failure);
    desktop.start();
    EXPECT_TRUE(desktop.isWindowless(app));
    EXPECT_EQ(desktop.log().debugs,
              (std::vector<std::string>{
                  "not shown: \"Tools\" of Painter (101): it lies on a layer above ordinary windows",
                  "not shown: \"Alert\" of Painter (101): it is neither standard nor full screen nor closable",
                  "not shown: \"Odd\" of Painter (101): its frame cannot be read"}));
    odd.healReading(ax::kSize);
    odd.focus();
    desktop.settle();
    EXPECT_TRUE(desktop.find(odd)) << "the focus gives it another chance";
}

TEST(Observing, AnApplicationThatAsksWhetherToSaveHoldsNobodyUp) {
    WatchedDesktop desktop;
    SimApp& app = desktop.launch("Editor");
    SimWindow& window = app.open();
    desktop.start();
    const int calls = desktop.accessibility().calls(app.pid());
    desktop.manager().closeWindow(desktop.idOf(window));
    EXPECT_EQ(desktop.accessibility().calls(app.pid()) - calls, 1)
        << "for the button, which is pressed without waiting";
    desktop.settle();
    EXPECT_FALSE(desktop.find(window));
}

TEST(Observing, MayEndInsideWhatItTells) {
    // Whatever the event and wherever it comes from: a notice, an enumeration, a timer or a sweep.
    for (int victim = 1; victim <= 12; ++victim) {
        WatchedDesktop desktop;
        SimApp& app = desktop.launch("Editor");
        app.refuseSubscriptions(ax::kTitleChanged, 2);
        SimWindow& window = app.open();
        int told = 0;
        const auto ending = desktop.store().observeEvents([&](const WindowEvent&) {
            if (++told == victim) desktop.destroyManager();
        });
        desktop.start();
        desktop.run(500ms);
        window.focus();
        window.setTitle("changed");
        window.setFrame({0, 0, 50, 50});
        window.setFullScreen(true);
        desktop.run(1s);
        SimApp& silent = desktop.launch("Silent");
        silent.open();
        desktop.settle();
        window.close();
        desktop.settle();
        silent.killSilently();
        app.quit();
        desktop.run(20s);
        EXPECT_EQ(told, victim) << "nothing is told after the end, and the story is long enough";
    }
}

}  // namespace
}  // namespace morvel
