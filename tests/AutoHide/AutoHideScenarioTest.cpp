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

    SimPanel& barPanel(size_t screen = 0) {
        return **std::ranges::find(toolkit().panels(), &bar(screen),
                                   [](SimPanel* panel) { return &panel->surface.root(); });
    }
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
    /// Whether the bar is seen for less than a second more, to the millisecond.
    bool hidesInASecond() {
        run(999ms);
        const bool wasSeen = isBarSeen();
        run(1ms);
        return wasSeen && !isBarSeen();
    }
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
    EXPECT_TRUE(desktop.hidesInASecond());
    EXPECT_EQ(desktop.mainLoop().armedTimers(), timersAtRest) << "a hidden bar has no timer";

    desktop.toolkit().wantsLessMotion = true;
    const int slides = desktop.barPanel().slides;
    desktop.reveal();
    EXPECT_TRUE(desktop.isBarSeen());
    desktop.toolkit().leave();
    EXPECT_TRUE(desktop.hidesInASecond());
    EXPECT_EQ(desktop.barPanel().slides, slides) << "it jumps where the person wants less motion";
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
        EXPECT_TRUE(desktop.hidesInASecond()) << what << ": the countdown starts when it is closed";
    };
    auto& toolkit = desktop.toolkit();
    const auto rightClick = [&](ui::View& view) { return [&toolkit, &view] { toolkit.rightClick(view); }; };
    const auto clickGroup = [&] { toolkit.click(desktop.group("Editor")); };
    const auto dismiss = [&] { toolkit.dismissMenu(); };
    const auto cancel = [&] { toolkit.give(ui::TextCommand::Cancel); };
    const auto openRowsMenu = [&] {
        clickGroup();
        toolkit.rightClick(*desktop.listed<GroupRowButton>().front());
        desktop.settings().groupingMode.set(GroupingMode::Never);
        desktop.settle();
        EXPECT_FALSE(toolkit.shownPopover());
    };
    holds("the bar's menu", rightClick(desktop.bar()), dismiss);
    holds("a button's menu", rightClick(desktop.group("Editor")), dismiss);
    holds(
        "the launcher", [&] { toolkit.click(*desktop.all<StartButton>(desktop.bar()).front()); }, cancel);
    holds("a list", clickGroup, [&] { toolkit.pressOutside(); });
    holds("a row's menu, though the list it stands in has gone", openRowsMenu, dismiss);
}

TEST(AutoHideScenario, AButtonThatGoesWithItsMenuOpenLetsTheBarGoToo) {
    HidingDesktop desktop;
    sim::SimApp& mail = desktop.launch("Mail");
    auto& inbox = mail.open({.title = "Inbox"});
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
    EXPECT_TRUE(desktop.hidesInASecond());
    drags.over(desktop.strip().surface.root());
    drags.over(desktop.button("Notes"));
    drags.cancel();
    EXPECT_TRUE(desktop.hidesInASecond());

    desktop.reveal();
    drags.pull(desktop.button("Notes"));
    drags.over(desktop.button("Draft"));
    drags.away();
    desktop.run(10s);
    EXPECT_TRUE(desktop.isBarSeen()) << "a button that is dragged out still belongs here";
    drags.cancel();
    EXPECT_TRUE(desktop.hidesInASecond());
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
    EXPECT_FALSE(desktop.isBarSeen());
    EXPECT_EQ(desktop.strip().frame, (Rect<ScreenSpace>{0, 698, 1000, 2}));
    desktop.reveal();
    EXPECT_TRUE(desktop.isBarSeen());
    EXPECT_EQ(desktop.barPanel().frame.maxY(), 700);
    desktop.rearrange({{DisplayID{1}, "Built-in Display", {0, 0, 1440, 900}}});
    desktop.run(1s);
    EXPECT_EQ(desktop.barPanel().frame.maxY(), 900) << "shown, it follows as any bar";
    desktop.toolkit().leave();
    EXPECT_TRUE(desktop.hidesInASecond());
}

}  // namespace
}  // namespace morvel
