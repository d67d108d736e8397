// Bars that hide at their edge, on a whole desktop.
#include "App/BarDesktop.h"
#include "Launcher/StartButton.h"

namespace morvel {
namespace {

using sim::SimPanel;

/// A desktop with two windows whose bars hide; eyes that see what is on the displays, not what is beside them.
class HidingDesktop : public BarDesktop {
public:
    explicit HidingDesktop(const std::vector<sim::DisplaySpec>& displays = sim::oneDisplay(1440, 900))
        : BarDesktop(displays) {
        auto& editor = launch("Editor");
        editor.open({.title = "Notes"});
        editor.open({.title = "Draft"});
        defaults().set("autoHide", DefaultsValue(true));
        startMorvel();
    }

    SimPanel& panelOf(ui::View& content) {
        for (SimPanel* panel : toolkit().panels())
            if (&panel->surface.root() == &content) return *panel;
        throw std::runtime_error("no such panel");
    }
    SimPanel& barPanel(size_t screen = 0) { return panelOf(bar(screen)); }
    bool isBarSeen(size_t screen = 0) { return isSeen(barPanel(screen)); }
    std::vector<SimPanel*> strips() {
        std::vector<SimPanel*> found = toolkit().panels();
        std::erase_if(found, [](SimPanel* panel) { return panel->options.kind != ui::PanelKind::Strip; });
        return found;
    }
    /// The strip of the display at this place in the list of screens.
    SimPanel& strip(size_t screen = 0) {
        for (SimPanel* panel : strips())
            if (screens().list.at(screen).frame.contains(panel->frame.center())) return *panel;
        throw std::runtime_error("no strip on that display");
    }
    void touchEdge(size_t screen = 0) {
        toolkit().moveTo(strip(screen).surface.root());
        settle();
    }
    void pointAtBar(size_t screen = 0) { toolkit().moveTo(bar(screen)); }
    /// The edge, and then the bar that has come under the pointer.
    void reveal() {
        touchEdge();
        pointAtBar();
    }
};

TEST(AutoHideScenario, HidesAtLeavingAndComesBackAtTheEdge) {
    HidingDesktop desktop;
    EXPECT_FALSE(desktop.isBarSeen()) << "it is never seen where it would stand";
    EXPECT_EQ(desktop.barPanel().slides, 0);
    EXPECT_EQ(desktop.strip().frame, (Rect<ScreenSpace>{0, 0, 1440, 2}));
    EXPECT_FALSE(desktop.barPanel().reservesSpace);

    desktop.reveal();
    EXPECT_TRUE(desktop.isBarSeen());
    EXPECT_EQ(desktop.barPanel().slides, 1);
    EXPECT_FALSE(desktop.barPanel().reservesSpace) << "windows do not give way for a moment";
    EXPECT_FALSE(desktop.strip().isShown) << "a press at the very edge is the bar's";
    desktop.run(60s);
    const size_t timersAtRest = desktop.mainLoop().armedTimers();
    EXPECT_TRUE(desktop.isBarSeen()) << "for as long as the pointer is over it";

    desktop.toolkit().leave();
    EXPECT_EQ(desktop.mainLoop().armedTimers(), timersAtRest + 1);
    desktop.run(999ms);
    EXPECT_TRUE(desktop.isBarSeen());
    desktop.run(1ms);
    EXPECT_FALSE(desktop.isBarSeen());
    EXPECT_EQ(desktop.mainLoop().armedTimers(), timersAtRest) << "a hidden bar has no timer";
}

TEST(AutoHideScenario, ABarThatWasNeverEnteredHidesAgain) {
    HidingDesktop desktop;
    desktop.touchEdge();
    desktop.toolkit().leave();
    desktop.run(999ms);
    EXPECT_TRUE(desktop.isBarSeen());
    desktop.run(1ms);
    EXPECT_FALSE(desktop.isBarSeen());
    desktop.touchEdge();
    EXPECT_TRUE(desktop.isBarSeen()) << "and the edge goes on working";
}

TEST(AutoHideScenario, IsSwitchedOnAndOffInAnyState) {
    HidingDesktop desktop;
    desktop.settings().autoHide.set(false);
    EXPECT_TRUE(desktop.isBarSeen());
    EXPECT_TRUE(desktop.strips().empty());
    EXPECT_TRUE(desktop.barPanel().reservesSpace);
    desktop.settings().clampWindows.set(false);
    EXPECT_FALSE(desktop.barPanel().reservesSpace);
    desktop.settings().clampWindows.set(true);

    desktop.settings().autoHide.set(true);
    EXPECT_FALSE(desktop.isBarSeen());
    desktop.reveal();
    desktop.toolkit().leave();
    desktop.settings().autoHide.set(false);
    desktop.run(5s);
    EXPECT_TRUE(desktop.isBarSeen()) << "the hiding that was under way does not come any more";
    desktop.pointAtBar();
    desktop.toolkit().leave();
    desktop.run(5s);
    EXPECT_TRUE(desktop.isBarSeen());
}

TEST(AutoHideScenario, ReducedMotionJumps) {
    HidingDesktop desktop;
    desktop.toolkit().wantsLessMotion = true;
    desktop.reveal();
    EXPECT_TRUE(desktop.isBarSeen());
    desktop.toolkit().leave();
    desktop.run(1s);
    EXPECT_FALSE(desktop.isBarSeen());
    EXPECT_EQ(desktop.barPanel().slides, 0);
}

TEST(AutoHideScenario, WhatIsOpenHoldsTheBar) {
    HidingDesktop desktop;
    desktop.settings().groupingMode.set(GroupingMode::Always);
    desktop.settle();
    const auto holds = [&](const char* what, auto open, auto close) {
        desktop.reveal();
        open();
        desktop.toolkit().leave();
        desktop.run(10s);
        EXPECT_TRUE(desktop.isBarSeen()) << what;
        close();
        desktop.settle();
        desktop.run(999ms);
        EXPECT_TRUE(desktop.isBarSeen()) << what << ": the countdown starts when it is closed";
        desktop.run(1ms);
        EXPECT_FALSE(desktop.isBarSeen()) << what;
    };
    auto& toolkit = desktop.toolkit();
    holds(
        "the bar's menu", [&] { toolkit.rightClick(desktop.bar()); }, [&] { toolkit.dismissMenu(); });
    holds(
        "a button's menu", [&] { toolkit.rightClick(desktop.group("Editor")); }, [&] { toolkit.dismissMenu(); });
    holds(
        "the launcher", [&] { toolkit.click(*desktop.all<StartButton>(desktop.bar()).front()); },
        [&] { toolkit.give(ui::TextCommand::Cancel); });
    holds(
        "a list", [&] { toolkit.click(desktop.group("Editor")); }, [&] { toolkit.pressOutside(); });
    holds(
        "a row's menu, though the list it stands in has gone",
        [&] {
            toolkit.click(desktop.group("Editor"));
            toolkit.rightClick(*desktop.all<GroupRowButton>(toolkit.shownPopover()->surface.root()).front());
            desktop.settings().groupingMode.set(GroupingMode::Never);
            desktop.settle();
            EXPECT_FALSE(toolkit.shownPopover());
        },
        [&] { toolkit.dismissMenu(); });
}

TEST(AutoHideScenario, AButtonThatGoesWithItsMenuOpenLetsTheBarGoToo) {
    HidingDesktop desktop;
    sim::SimApp& mail = desktop.launch("Mail");
    auto& inbox = mail.open({.title = "Inbox"});
    desktop.settle();
    desktop.reveal();
    desktop.toolkit().rightClick(desktop.button("Inbox"));
    inbox.close();
    desktop.settle();
    desktop.toolkit().leave();
    desktop.toolkit().dismissMenu();
    desktop.run(1s);
    EXPECT_FALSE(desktop.isBarSeen());

    // The whole bar goes: what comes in its place hides, and the menu that is still open says nothing to it.
    desktop.reveal();
    desktop.toolkit().rightClick(desktop.button("Notes"));
    desktop.settings().barHeight.set(30);
    desktop.settle();
    EXPECT_FALSE(desktop.isBarSeen());
    desktop.toolkit().dismissMenu();
    desktop.run(5s);
    EXPECT_FALSE(desktop.isBarSeen());
}

TEST(AutoHideScenario, DragsRevealAndHold) {
    HidingDesktop desktop;
    desktop.settings().dragHoverRaiseMode.set(DragHoverRaiseMode::Off);
    sim::SimDrags& drags = desktop.toolkit().drags();
    drags.bring(sim::SimPasteboard::ofFile("/tmp/a"));
    drags.over(desktop.strip().surface.root());
    EXPECT_TRUE(desktop.isBarSeen()) << "a file at the edge wants the bar";
    drags.over(desktop.button("Notes"));
    desktop.run(10s);
    desktop.run(550ms);  // no countdown has gone on below the drag
    drags.away();
    desktop.run(999ms);
    EXPECT_TRUE(desktop.isBarSeen());
    desktop.run(1ms);
    EXPECT_FALSE(desktop.isBarSeen());
    drags.over(desktop.strip().surface.root());
    drags.over(desktop.button("Notes"));
    drags.cancel();
    desktop.run(1s);
    EXPECT_FALSE(desktop.isBarSeen());

    desktop.reveal();
    drags.pull(desktop.button("Notes"));
    drags.over(desktop.button("Draft"));
    drags.away();
    desktop.run(10s);
    EXPECT_TRUE(desktop.isBarSeen()) << "a button that is dragged out still belongs here";
    drags.cancel();
    desktop.run(1s);
    EXPECT_FALSE(desktop.isBarSeen());
}

TEST(AutoHideScenario, ABarNeverShowsOnTheDisplayBeyondItsEdge) {
    HidingDesktop desktop({{DisplayID{1}, "Lower", {0, 0, 1440, 900}}, {DisplayID{2}, "Upper", {100, 900, 1280, 800}}});
    EXPECT_FALSE(desktop.isBarSeen(0));
    EXPECT_FALSE(desktop.isBarSeen(1));
    EXPECT_TRUE(desktop.barPanel(0).isShown) << "below is nothing that it could be seen on";
    EXPECT_FALSE(desktop.barPanel(1).isShown);

    desktop.touchEdge(1);
    EXPECT_TRUE(desktop.isBarSeen(1));
    EXPECT_EQ(desktop.barPanel(1).frame, (Rect<ScreenSpace>{100, 900, 1280, 44}));
    EXPECT_EQ(desktop.barPanel(1).slides, 0) << "on its way it would show there too";
    EXPECT_FALSE(desktop.isBarSeen(0));
    desktop.toolkit().leave();
    desktop.run(1s);
    EXPECT_FALSE(desktop.isBarSeen(1));

    desktop.unplug(DisplayID{1});
    desktop.rearrange({{DisplayID{2}, "Upper", {0, 0, 1280, 800}}});
    desktop.run(1s);
    EXPECT_EQ(desktop.strips().size(), 1u) << "with a display goes its strip";
    EXPECT_FALSE(desktop.isBarSeen());
    EXPECT_TRUE(desktop.barPanel().isShown) << "there is room below now";
    desktop.reveal();
    EXPECT_EQ(desktop.barPanel().frame, (Rect<ScreenSpace>{0, 0, 1280, 44}));
    EXPECT_EQ(desktop.barPanel().slides, 1);
}

TEST(AutoHideScenario, FollowsTheDisplaysAndTheEdgeWhileHidden) {
    HidingDesktop desktop(sim::twoDisplays());
    desktop.rearrange({{DisplayID{1}, "Built-in Display", {0, 0, 1000, 700}}});
    desktop.run(100ms);
    EXPECT_EQ(std::ranges::count_if(desktop.strips(), &SimPanel::isShown), 1) << "that of a missing display is nowhere";
    desktop.run(1s);
    EXPECT_FALSE(desktop.isBarSeen());
    EXPECT_EQ(desktop.strip().frame, (Rect<ScreenSpace>{0, 0, 1000, 2}));
    desktop.settings().barEdge.set(MorvelEdge::Top);
    desktop.settings().compactAtTop.set(false);
    desktop.settle();
    EXPECT_FALSE(desktop.isBarSeen());
    EXPECT_EQ(desktop.strip().frame, (Rect<ScreenSpace>{0, 698, 1000, 2}));
    desktop.reveal();
    EXPECT_TRUE(desktop.isBarSeen());
    EXPECT_EQ(desktop.barPanel().frame.maxY(), 700);
    desktop.rearrange({{DisplayID{1}, "Built-in Display", {0, 0, 1440, 900}}});
    desktop.run(1s);
    EXPECT_EQ(desktop.barPanel().frame.maxY(), 900) << "shown, it follows as any bar";
    desktop.toolkit().leave();
    desktop.run(1s);
    EXPECT_FALSE(desktop.isBarSeen());
}

}  // namespace
}  // namespace morvel
