// Dragging on, over and between bars, as a person sees it; and drags that go wrong.
#include "Bar/Drag/RunningStackView.h"
#include "Bar/Drag/RunningWindowDrag.h"
#include "Bar/DragDesktop.h"

namespace morvel {
namespace {

using sim::SimPasteboard;
using ui::DragOperation;

const SimPasteboard kFile = SimPasteboard::ofFile("/tmp/report.txt");

class WindowDragDesktop : public DragDesktop {
public:
    using DragDesktop::DragDesktop;

    /// One application for each title, whose only window is at the left of the display at `x`.
    std::vector<sim::SimWindow*> openAll(const std::vector<std::string>& titles, double x = 0) {
        std::vector<sim::SimWindow*> windows;
        for (const std::string& title : titles)
            windows.push_back(&launch("App " + title).open({.x = x, .y = 100, .title = title}));
        return windows;
    }
    /// The strip's buttons from left to right as they are shown.
    std::string onScreen(size_t screen = 0) {
        std::map<double, std::string> byPlace;
        for (const auto* button : all<WindowButton>(bar(screen)))
            byPlace[button->frame().x] = button->titleLabel().text();
        std::string text;
        for (const auto& [x, label] : byPlace) text += label;
        return text;
    }
};

TEST(RunningDrag, NeighboursMakeRoomAndTheOrderLasts) {
    WindowDragDesktop desktop;
    const auto windows = desktop.openAll({"a", "b", "c", "d"});
    desktop.startMorvel();
    ASSERT_EQ(desktop.strip(), "a b c d");

    WindowButton& a = desktop.button("a");
    WindowButton& b = desktop.button("b");
    desktop.drags().pull(a);
    const double placeOfA = a.frame().x, placeOfB = b.frame().x;
    EXPECT_EQ(a.alpha(), 0.3);
    EXPECT_EQ(desktop.drags().over(desktop.button("c"), 10), DragOperation::Move);
    EXPECT_EQ(desktop.strip(), "b c a d");
    desktop.run(75ms);
    EXPECT_GT(b.frame().x, placeOfA);
    EXPECT_LT(b.frame().x, placeOfB) << "on its way";
    windows[1]->setTitle("b");
    desktop.run(100ms);
    EXPECT_EQ(b.frame().x, placeOfA);
    const size_t timersAtRest = desktop.mainLoop().armedTimers();
    EXPECT_EQ(desktop.drags().drop(), DragOperation::Move);
    desktop.run(1s);
    EXPECT_LE(desktop.mainLoop().armedTimers(), timersAtRest) << "nothing ticks once it is in its place";
    EXPECT_EQ(a.alpha(), 1);
    EXPECT_EQ(desktop.onScreen(), "bcad");
    EXPECT_FALSE(windows[0]->isFocused()) << "a drag is not a click";

    windows[2]->setTitle("C");
    desktop.run(1s);
    EXPECT_EQ(desktop.strip(), "b C a d") << "a rebuild";
    desktop.settings().barHeight.set(44);
    EXPECT_EQ(desktop.strip(), "b C a d") << "bars that are made anew";
    desktop.settings().groupingMode.set(GroupingMode::Always);
    EXPECT_EQ(desktop.strip(), "App bx1 App cx1 App ax1 App dx1") << "groups stand where their first window stands";
}

TEST(RunningDrag, ReleasedElsewhereOrRefusedChangesNothing) {
    WindowDragDesktop desktop;
    desktop.openAll({"a", "b", "c"});
    desktop.startMorvel();
    WindowButton& a = desktop.button("a");
    desktop.drags().pull(a);
    desktop.drags().over(desktop.button("c"), 10);
    desktop.drags().away();
    EXPECT_EQ(desktop.strip(), "a b c") << "back where it was, already while the drag is elsewhere";
    desktop.drags().over(desktop.button("b"), 10);
    EXPECT_EQ(desktop.strip(), "b a c") << "and it may come back";
    desktop.drags().cancel();
    desktop.run(1s);
    EXPECT_EQ(desktop.onScreen(), "abc");
    EXPECT_EQ(a.alpha(), 1);

    desktop.drags().refuses = true;
    desktop.toolkit().press(a);
    const Point<ViewSpace> from = a.boundsInRoot().center();
    desktop.toolkit().drag({from.x + 3, from.y + 4});
    desktop.toolkit().release();
    desktop.settle();
    EXPECT_EQ(a.alpha(), 1);
    EXPECT_EQ(desktop.strip(), "a b c") << "no click follows, so nothing is focused";
}

TEST(RunningDrag, ToAnotherDisplaysBarMovesTheWindowToTheSlot) {
    WindowDragDesktop desktop(sim::twoDisplays());
    const auto here = desktop.openAll({"a", "b"});
    desktop.openAll({"x", "y"}, 1700);
    desktop.startMorvel();
    desktop.drags().pull(desktop.button("a"));
    EXPECT_FALSE(desktop.isHighlighted(0));
    EXPECT_EQ(desktop.drags().over(desktop.button("x", 1), -20), DragOperation::Move);
    EXPECT_EQ(desktop.placeholders(1), 1u);
    EXPECT_TRUE(desktop.isHighlighted(1));
    desktop.drags().away();
    EXPECT_EQ(desktop.placeholders(1), 0u);
    EXPECT_EQ(desktop.dropOn(desktop.button("y", 1), -20), DragOperation::Move);
    EXPECT_EQ(desktop.placeholders(1), 0u);
    desktop.run(2s);
    EXPECT_EQ(desktop.strip(0), "b");
    EXPECT_EQ(desktop.onScreen(1), "xay") << "between the two, where it was let go";
    EXPECT_GE(here[0]->frame().x, 1440);
    EXPECT_FALSE(desktop.isHighlighted(1));
}

TEST(RunningDrag, BadDragsLeaveNothingBehind) {
    WindowDragDesktop desktop(sim::twoDisplays());
    const auto here = desktop.openAll({"a", "b", "c"});
    desktop.openAll({"x", "y"}, 1700);
    desktop.startMorvel();
    const WindowID missing{1, 2};
    for (const std::string& text : {std::string("not a UUID"), std::string(), missing.text()}) {
        desktop.drags().bring(SimPasteboard::ofText(RunningWindowDrag::type(), text));
        EXPECT_EQ(desktop.dropOn(desktop.button("a")), DragOperation::None) << text;
        EXPECT_EQ(desktop.placeholders(0), 0u) << text;
    }
    EXPECT_EQ(desktop.strip(), "a b c");

    desktop.drags().pull(desktop.button("a"));
    desktop.drags().over(desktop.button("c"), 10);
    here[0]->close();
    desktop.settle();
    desktop.drags().drop();
    desktop.run(1s);
    EXPECT_EQ(desktop.strip(), "[App a] b c")
        << "the dragged button's window closed: its application's tile took its place";
    EXPECT_EQ(desktop.all<RunningStackView>(desktop.bar()).at(0)->draggingSource(), nullptr);

    desktop.drags().pull(desktop.button("b"));
    desktop.drags().over(desktop.button("c"), 10);
    here[2]->setTitle("C");
    desktop.run(1s);
    EXPECT_EQ(desktop.strip(), "[App a] C b") << "a rebuild leaves the dragged button under the hand";
    EXPECT_EQ(desktop.drags().drop(), DragOperation::Move);
    desktop.run(1s);
    EXPECT_EQ(desktop.onScreen(), "App aCb");

    desktop.drags().pull(desktop.button("b"));
    desktop.drags().over(desktop.button("x", 1), 10);
    here[1]->close();
    desktop.settle();
    desktop.drags().drop();
    desktop.run(1s);
    EXPECT_EQ(desktop.onScreen(1), "xy") << "closed over the other bar";
    EXPECT_EQ(desktop.placeholders(1), 0u);

    desktop.drags().pull(desktop.button("C"));
    desktop.drags().over(desktop.button("x", 1), 10);
    desktop.unplug(DisplayID{2});
    desktop.run(10s);
    EXPECT_EQ(desktop.drags().drop(), DragOperation::None) << "the bar under the drag is gone with its display";
    desktop.run(1s);
    EXPECT_EQ(desktop.button("C").alpha(), 1);
}

TEST(FileDrag, RestingOnAButtonRaisesAndTheBarIsLetGo) {
    WindowDragDesktop desktop;
    const auto windows = desktop.openAll({"a", "b"});
    windows[1]->focus();
    desktop.launch("App Idle");
    desktop.startMorvel();
    desktop.countHolds();
    desktop.drags().bring(kFile);
    EXPECT_EQ(desktop.drags().over(desktop.button("a")), DragOperation::None) << "it is dropped into the window";
    EXPECT_TRUE(desktop.isHighlighted());
    EXPECT_GT(desktop.held, 0);
    desktop.run(599ms);
    EXPECT_FALSE(windows[0]->isFocused());
    desktop.drags().over(desktop.button("a"), 3);
    desktop.run(1ms);
    EXPECT_TRUE(windows[0]->isFocused());
    windows[1]->focus();
    desktop.drags().over(desktop.button("a"), 5);
    desktop.run(5s);
    EXPECT_TRUE(windows[1]->isFocused()) << "raised once, however long it rests";
    desktop.drags().over(desktop.button("App Idle"));
    desktop.drags().over(desktop.bar());
    EXPECT_GT(desktop.held, 0) << "the drag is still over the bar";
    desktop.drags().cancel();
    desktop.run(1s);
    EXPECT_EQ(desktop.held, 0);
    EXPECT_FALSE(desktop.isHighlighted());

    desktop.drags().bring(kFile);
    desktop.drags().over(desktop.button("a"));
    windows[0]->close();
    desktop.run(5s);
    desktop.drags().away();
    desktop.drags().cancel();
    EXPECT_EQ(desktop.held, 0) << "the button under the drag went away with its window";
}

TEST(FileDrag, TheBarUnderItMayGoWithItsDisplay) {
    WindowDragDesktop desktop(sim::twoDisplays());
    desktop.openAll({"a"});
    auto& editor = desktop.launch("Editor");
    editor.open({.x = 1700, .y = 100, .title = "one"});
    editor.open({.x = 1700, .y = 200, .title = "two"});
    desktop.startMorvel();
    desktop.settings().groupingMode.set(GroupingMode::Always);
    desktop.settle();
    desktop.countHolds(0);
    desktop.drags().bring(kFile);
    desktop.drags().over(*desktop.all<GroupedAppButton>(desktop.bar(1)).at(0));
    desktop.run(700ms);
    ASSERT_TRUE(desktop.toolkit().shownPopover()) << "the group's list is open";
    desktop.unplug(DisplayID{2});
    desktop.run(10s);
    EXPECT_FALSE(desktop.toolkit().shownPopover());
    EXPECT_FALSE(desktop.isHighlighted());
    desktop.drags().over(desktop.group("App a"));
    EXPECT_GT(desktop.held, 0) << "it goes on over the bar that is left";
    desktop.drags().cancel();
    desktop.run(1s);
    EXPECT_EQ(desktop.held, 0);
    EXPECT_FALSE(desktop.isHighlighted());
}

TEST(FileDrag, GoesOnThroughAGroupsListToOneOfItsWindows) {
    WindowDragDesktop desktop;
    auto& editor = desktop.launch("Editor");
    auto& one = editor.open({.title = "one"});
    auto& two = editor.open({.title = "two"});
    auto& alone = desktop.launch("Mail").open({.title = "Inbox"});
    one.focus();
    desktop.startMorvel();
    desktop.settings().groupingMode.set(GroupingMode::Always);
    desktop.settle();
    desktop.countHolds();
    const auto rows = [&] { return desktop.listed<GroupRowButton>(); };

    desktop.drags().bring(kFile);
    desktop.drags().over(desktop.group("Editor"));
    desktop.run(600ms);
    ASSERT_EQ(rows().size(), 2u);
    desktop.drags().over(*rows()[0]);
    desktop.run(500ms);
    desktop.drags().over(*rows()[1]);
    desktop.run(500ms);
    ASSERT_EQ(rows().size(), 2u) << "the list stays open under the drag";
    desktop.run(100ms);
    EXPECT_TRUE(two.isFocused());
    EXPECT_TRUE(rows().empty()) << "it has done its work";
    desktop.drags().cancel();
    EXPECT_EQ(desktop.held, 0);

    desktop.drags().bring(kFile);
    desktop.drags().over(desktop.group("Editor"));
    desktop.run(600ms);
    ASSERT_EQ(rows().size(), 2u);
    desktop.drags().over(desktop.group("Mail"));
    EXPECT_TRUE(rows().empty()) << "another button closes the list at once";
    desktop.run(600ms);
    EXPECT_TRUE(alone.isFocused()) << "a group of one needs no list";
    desktop.drags().over(desktop.group("Editor"));
    desktop.run(600ms);
    ASSERT_EQ(rows().size(), 2u);
    desktop.drags().over(*rows()[0]);
    desktop.drags().cancel();
    EXPECT_TRUE(rows().empty());
    EXPECT_EQ(desktop.held, 0);
}

TEST(ForeignDrag, TheHighlightFadesAndComesBack) {
    WindowDragDesktop desktop;
    desktop.openAll({"a"});
    desktop.startMorvel();
    desktop.drags().bring(SimPasteboard::ofText("public.utf8-plain-text", "hello"));
    desktop.drags().over(desktop.bar());
    const ui::View& highlight = *desktop.all<DragHighlightView>(desktop.bar()).at(0);
    desktop.run(60ms);
    EXPECT_GT(highlight.alpha(), 0);
    EXPECT_LT(highlight.alpha(), 1);
    desktop.run(100ms);
    EXPECT_EQ(highlight.alpha(), 1);
    EXPECT_EQ(highlight.frame(), desktop.bar().bounds());
    desktop.drags().away();
    desktop.run(100ms);
    desktop.drags().over(desktop.bar());
    desktop.run(1s);
    EXPECT_EQ(highlight.alpha(), 1) << "off and on again within the fade leaves it visible";
    EXPECT_FALSE(highlight.isHidden());
    desktop.drags().cancel();
    desktop.run(129ms);
    EXPECT_FALSE(highlight.isHidden());
    desktop.run(1ms);
    EXPECT_TRUE(highlight.isHidden());
}

TEST(Pointer, TheWheelStepsThroughTheWindowsAndTheMiddleButtonCloses) {
    WindowDragDesktop desktop;
    const auto windows = desktop.openAll({"a", "b", "c"});
    desktop.launch("App Idle");
    desktop.startMorvel();
    windows[0]->focus();
    ui::View& over = desktop.button("b");
    const auto turn = [&](double notches) {
        desktop.toolkit().turnWheel(over, notches);
        desktop.settle();
    };
    ASSERT_EQ(desktop.strip(), "a* b c [App Idle]");
    turn(1);
    ASSERT_EQ(desktop.strip(), "a b* c [App Idle]");
    for (int i = 0; i < 20; ++i) turn(0.5);
    EXPECT_TRUE(windows[1]->isFocused()) << "the rest of a flick";
    desktop.run(200ms);
    turn(0.5);
    EXPECT_TRUE(windows[1]->isFocused());
    turn(0.5);
    EXPECT_TRUE(windows[2]->isFocused());
    desktop.run(200ms);
    turn(1);
    EXPECT_TRUE(windows[2]->isFocused()) << "neither beyond the last one nor to a tile without a window";
    desktop.run(200ms);
    turn(-1);
    EXPECT_TRUE(windows[1]->isFocused());
    desktop.run(200ms);
    turn(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(windows[1]->isFocused());

    ui::EventRouter& router = desktop.toolkit().surfaceOf(over)->router();
    router.buttonPressed({ui::MouseButton::Middle, over.boundsInRoot().center()});
    router.buttonReleased({ui::MouseButton::Middle, {0, 0}});
    EXPECT_TRUE(windows[1]->isOpen()) << "released elsewhere";
    desktop.toolkit().middleClick(desktop.button("c"));
    desktop.run(1s);
    EXPECT_FALSE(windows[2]->isOpen());
    desktop.toolkit().middleClick(desktop.button("App Idle"));
    desktop.run(5s);
    EXPECT_NE(desktop.strip().find("[App c]"), std::string::npos) << "a tile has no window to close";
}

}  // namespace
}  // namespace morvel
