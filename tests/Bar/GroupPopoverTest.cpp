// One application's windows behind a counted button and its list.
#include "Bar/Buttons/GroupPopover.h"

#include <gtest/gtest.h>

#include "Bar/BarBackgroundLayer.h"
#include "Bar/ButtonWorld.h"
#include "Bar/Buttons/GroupedAppButton.h"

namespace morvel {
namespace {

using Calls = std::vector<std::string>;

struct GroupWorld : sim::ButtonWorld {
    std::vector<OtherScreen> screens;
    Calls calls;
    ui::View bar;
    sim::Surface surface{bar};
    std::unique_ptr<GroupPopover> popover;
    std::unique_ptr<GroupedAppButton> button;

    GroupWorld() {
        bar.setFrame({0, 0, 600, 32});
        popover = std::make_unique<GroupPopover>(services(), popoverBindings());
        button = std::make_unique<GroupedAppButton>(services(), WindowID{0, 99}, "mail", buttonBindings());
        bar.addSubview(*button);
        button->setFrame({0, 0, 40, 32});
    }

    static WindowSnapshot window(uint64_t n, int pid = 10) {
        WindowSnapshot snapshot;
        snapshot.id = {0, n};
        snapshot.pid = ProcessID{pid};
        snapshot.bundleID = "mail";
        snapshot.appName = "Mail";
        snapshot.title = "w" + std::to_string(n);
        return snapshot;
    }
    static std::vector<WindowSnapshot> windows(uint64_t count) {
        std::vector<WindowSnapshot> list;
        for (uint64_t n = 1; n <= count; ++n) list.push_back(window(n));
        return list;
    }

    GroupPopoverBindings popoverBindings() {
        GroupPopoverBindings b;
        b.onActivate = [this](WindowID id) { calls.push_back("activate " + std::to_string(id.low)); };
        b.onClose = [this](WindowID id) { calls.push_back("close " + std::to_string(id.low)); };
        b.onPinApp = [this](ProcessID pid) { calls.push_back("pin " + std::to_string(pid.value)); };
        b.onMoveWindow = [this](WindowID id, DisplayID display) {
            calls.push_back("move " + std::to_string(id.low) + " to " + std::to_string(display.value));
        };
        b.app = commands.actions();
        b.otherScreensProvider = [this] { return screens; };
        b.onWillShow = [this] { ++pins; };
        b.onDidClose = [this] { --pins; };
        return b;
    }
    GroupedAppButtonBindings buttonBindings() {
        GroupedAppButtonBindings b;
        b.onClick = [this](GroupedAppButton& clicked) {
            popover->show(clicked, clicked.windows(), MorvelEdge::Bottom);
        };
        b.onPin = [this](ProcessID pid) { calls.push_back("pin " + std::to_string(pid.value)); };
        b.app = commands.actions();
        b.bordersProvider = [] { return false; };
        b.accentProvider = [] { return ui::kControlAccentColor; };
        b.reveal = {[this] { ++pins; }, [this] { --pins; }};
        return b;
    }

    sim::Surface& list() { return toolkit.openPopover->surface; }
    const GroupRowButton& row(size_t index) {
        return dynamic_cast<const GroupRowButton&>(*toolkit.openPopover->content.subviews().at(index));
    }
    Size listSize() { return toolkit.openPopover ? toolkit.openPopover->size : Size{}; }
};

TEST(GroupedAppButton, CountsItsWindowsInABadgeThatStaysInside) {
    GroupWorld world;
    const CountBadge& badge = world.button->countBadge();
    EXPECT_EQ(world.button->intrinsicSize(), (Size{40, 32}));
    world.button->update(world.windows(1));
    EXPECT_TRUE(badge.isHidden());
    double former = 0;
    for (const size_t count : {2, 12, 99, 1000}) {
        world.button->update(world.windows(count));
        world.surface.layout();
        EXPECT_FALSE(badge.isHidden());
        EXPECT_EQ(badge.text(), std::to_string(count));
        const auto& frame = badge.frame();
        EXPECT_GE(frame.minX(), 0) << count;
        EXPECT_LE(frame.maxX(), 40) << count;
        EXPECT_LE(frame.maxY(), 32) << count;
        EXPECT_GE(frame.width, frame.height) << "a pill lies flat";
        EXPECT_GE(frame.width, former) << "no number is cut";
        EXPECT_GT(frame.width, world.toolkit.textSize(badge.text(), {.size = 9}).width);
        former = frame.width;
    }

    auto renamed = world.windows(1000);
    renamed[3].title = "renamed";
    world.surface.changes.clear();
    world.surface.layoutRequests = 0;
    world.button->update(renamed);
    EXPECT_TRUE(world.surface.changes.empty()) << "a title does not show on the button";
    EXPECT_EQ(world.surface.layoutRequests, 0);
}

TEST(GroupedAppButton, OpensOnPressAndQuitsTheProcessThatRuns) {
    GroupWorld world;
    world.button->update({world.window(1, 10), world.window(2, 11), world.window(3, 11)});
    world.surface.press(*world.button);
    ASSERT_TRUE(world.popover->isShown()) << "on press, not on release";
    world.popover->close();

    world.workspace.running = {{ProcessID{11}, 1}};
    for (const char* title : {"Quit Mail", "Force Quit Mail", "Pin App to Morvel", "Show in Finder"}) {
        world.surface.rightClick(*world.button);
        EXPECT_EQ(world.pins, 1);
        EXPECT_TRUE(world.toolkit.choose(title)) << title;
    }
    EXPECT_EQ(world.workspace.calls, (Calls{"terminate 11", "force 11", "reveal /Applications/mail"}));
    EXPECT_EQ(world.calls, Calls{"pin 10"}) << "the first window's process stands for the application";
    EXPECT_EQ(world.pins, 0);
}

TEST(GroupPopover, ListsTheWindowsBesideItsButton) {
    GroupWorld world;
    world.popover->show(*world.button, world.windows(10), MorvelEdge::Bottom);
    EXPECT_EQ(world.listSize(), (Size{280, 360}));
    EXPECT_EQ(world.toolkit.openPopover->edge, ui::Edge::Top);
    EXPECT_EQ(world.row(9).frame(), (Rect<ViewSpace>{0, 324, 280, 36}));
    EXPECT_EQ(world.row(9).titleLabel().frame(), (Rect<ViewSpace>{34, 10.5, 280 - 34 - 32, 15}));
    EXPECT_EQ(world.row(9).closeButton().frame(), (Rect<ViewSpace>{256, 10, 16, 16}));
    EXPECT_TRUE(world.icons.symbols.contains({"xmark.circle.fill", 14.0}));
    world.list().click(world.row(2));
    EXPECT_EQ(world.calls, Calls{"activate 3"});

    world.popover->show(*world.button, world.windows(1), MorvelEdge::Top);
    EXPECT_EQ(world.listSize(), (Size{280, 36}));
    EXPECT_EQ(world.toolkit.openPopover->edge, ui::Edge::Bottom);
    EXPECT_EQ(world.pins, 1) << "open all the time: pinned once";
    world.toolkit.outsidePresses.emit();
    EXPECT_EQ(world.pins, 0);
    EXPECT_FALSE(world.toolkit.outsidePresses.hasListeners());
    EXPECT_TRUE(world.popover->currentWindows().empty());
    world.popover->show(*world.button, {}, MorvelEdge::Top);
    EXPECT_EQ(world.listSize(), (Size{280, 36})) << "never without any height";
}

TEST(GroupPopover, ClosesWithItsLastRow) {
    GroupWorld world;
    world.popover->show(*world.button, world.windows(3), MorvelEdge::Bottom);
    world.list().click(world.row(1).closeButton());
    EXPECT_EQ(world.popover->currentWindows(), (std::vector{world.window(1), world.window(3)}));
    EXPECT_EQ(world.listSize().height, 72) << "at once, though the window may still be closing";
    world.list().layout();
    world.list().click(world.row(1).closeButton());
    world.list().layout();
    world.list().click(world.row(0).closeButton());
    EXPECT_EQ(world.calls, (Calls{"close 2", "close 3", "close 1"}));
    EXPECT_FALSE(world.popover->isShown());
    EXPECT_EQ(world.pins, 0);
    EXPECT_FALSE(world.toolkit.outsidePresses.hasListeners());
}

TEST(GroupPopover, RowsFollowTheirWindows) {
    GroupWorld world;
    world.popover->show(*world.button, world.windows(2), MorvelEdge::Bottom);
    WindowSnapshot renamed = world.window(2);
    renamed.title = "renamed";
    world.popover->windowsChanged({renamed, world.window(7)});
    EXPECT_EQ(world.listSize().height, 36);
    EXPECT_EQ(world.row(0).titleLabel().text(), "renamed");
    world.popover->windowsChanged({});
    EXPECT_FALSE(world.popover->isShown());
    EXPECT_EQ(world.pins, 0);
    world.popover->windowsChanged({renamed});
    EXPECT_EQ(world.pins, 0) << "a closed list follows nothing";
}

TEST(GroupPopover, RowMenuActsAndClosesTheList) {
    GroupWorld world;
    world.workspace.running[ProcessID{10}] = 1;
    world.screens = {{"Studio", DisplayID{5}}};
    const struct {
        const char* title;
        const char* call;
        bool closes;
    } rows[] = {{"Close Window", "close 1", false},
                {"Quit Mail", "", false},
                {"Pin App to Morvel", "pin 10", true},
                {"Studio", "move 1 to 5", true}};
    for (const auto& row : rows) {
        world.calls.clear();
        world.popover->show(*world.button, world.windows(2), MorvelEdge::Bottom);
        world.list().rightClick(world.row(0));
        EXPECT_TRUE(world.toolkit.choose(row.title)) << row.title;
        EXPECT_EQ(world.calls, *row.call ? Calls{row.call} : Calls{});
        EXPECT_EQ(world.popover->isShown(), !row.closes) << row.title;
    }
    EXPECT_EQ(world.workspace.calls, Calls{"terminate 10"});

    WindowSnapshot unnamed = world.window(1);
    unnamed.bundleID.reset();
    world.popover->show(*world.button, {unnamed}, MorvelEdge::Bottom);
    world.list().rightClick(world.row(0));
    EXPECT_FALSE(world.toolkit.choose("Pin App to Morvel")) << "it could not be found again";

    world.popover->show(*world.button, world.windows(2), MorvelEdge::Bottom);
    world.list().rightClick(world.row(0));
    world.popover.reset();  // the bar's display is unplugged while the menu is open
    EXPECT_TRUE(world.toolkit.choose("Studio"));
    EXPECT_EQ(world.calls.back(), "move 1 to 5");
}

TEST(BarBackground, LiesBelowEverythingInTheChosenStyle) {
    ui::View host;
    ui::View strip;
    host.setFrame({0, 0, 600, 32});
    host.addSubview(strip);
    BarBackgroundLayer background(host);
    const std::map<BarBlurIntensity, int> materials = {
        {BarBlurIntensity::Subtle, 6}, {BarBlurIntensity::Medium, 13}, {BarBlurIntensity::Strong, 7}};
    for (const auto& [intensity, material] : materials) {
        background.apply(BarBackgroundStyle::Translucent, intensity);
        ASSERT_EQ(host.subviews().size(), 2u) << "the former one is gone";
        const auto& view = dynamic_cast<const ui::VisualEffectView&>(*host.subviews()[0]);
        EXPECT_EQ(static_cast<int>(view.material()), material);
    }
    background.apply(BarBackgroundStyle::Opaque, BarBlurIntensity::Medium);
    EXPECT_EQ(host.subviews()[0]->background(), ui::kWindowBackgroundColor);
    host.setFrame({0, 0, 800, 40});
    background.layout();
    EXPECT_EQ(host.subviews()[0]->frame(), host.bounds());
    background.apply(BarBackgroundStyle::Clear, BarBlurIntensity::Medium);
    EXPECT_EQ(host.subviews(), std::vector<ui::View*>{&strip});
}

}  // namespace
}  // namespace morvel
