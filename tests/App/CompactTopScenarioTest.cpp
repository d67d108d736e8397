// A bar at the top edge that shares its strip with the system's menu bar.
#include "App/BarDesktop.h"
#include "Bar/BarFrame.h"
#include "Bar/CompactTop/CompactTopExpansionToggleButton.h"
#include "Bar/Pinned/PinnedAppButton.h"
#include "Launcher/StartButton.h"
#include "Pinned/PinnedItemsCoding.h"
#include "sim/SimMenuBar.h"

namespace morvel {
namespace {

using Frame = Rect<ScreenSpace>;

/// A desktop with an editor in front, whose menus end at 400, and status items 30, 40, 50 and 60 points wide from the
/// right end on, the first two of them Control Center's.
class CompactDesktop : public BarDesktop {
public:
    explicit CompactDesktop(const std::vector<sim::DisplaySpec>& displays = sim::oneDisplay(1440, 900))
        : BarDesktop(displays) {
        menus.setTitles(editor, {10, 40, 100, 300}, 400);
        menus.setItems(control, {30, 40}, {1440, 0});
        menus.setItems(extra, {50, 60}, {1440, 0}, 70);
        defaults().set("barEdge", {std::string("top")});
        defaults().set("autoDetectMacOSMenuWidth", {true});
        editor.activate();
    }

    std::vector<sim::SimPanel*> panels(ui::PanelKind kind) {
        settle();
        std::vector<sim::SimPanel*> found = toolkit().panels();
        std::erase_if(found, [kind](const sim::SimPanel* panel) { return panel->options.kind != kind; });
        return found;
    }
    Frame barFrame(size_t screen = 0) { return controller(screen).frame(); }
    MorvelController& controller(size_t screen = 0) {
        settle();
        return *delegate().displayManager()->controllers().at(*screens().list.at(screen).displayID);
    }
    CompactTopExpansionToggleButton& toggle() { return controller().rightStrip()->expansionToggleButton(); }

    sim::SimMenuBar menus{*this};
    sim::SimApp& editor = launch("Editor");
    sim::SimApp& control =
        launch("Control Center", {.bundleID = "com.apple.controlcenter", .policy = ActivationPolicy::Accessory});
    sim::SimApp& extra = launch("Extra", {.policy = ActivationPolicy::Accessory});
};

TEST(CompactTop, StandsBetweenTheMenusAndTheStatusItems) {
    CompactDesktop desktop;
    desktop.startMorvel();
    const auto bars = desktop.panels(ui::PanelKind::Bar);
    ASSERT_EQ(bars.size(), 1u);
    EXPECT_EQ(bars[0]->frame, (Frame{408, 876, 1440 - 408 - 100, 24})) << "two items are 70 wide, and 100 is the least";
    EXPECT_EQ(bars[0]->moves, 0) << "it is made where it belongs";
    ASSERT_EQ(desktop.panels(ui::PanelKind::Companion).size(), 1u);
    const sim::SimPanel& strip = *desktop.panels(ui::PanelKind::Companion)[0];
    EXPECT_EQ(strip.frame, (Frame{1340 - kCompactTopStripWidth, 876, kCompactTopStripWidth, 24}));
    EXPECT_TRUE(strip.isShown);

    desktop.settings().compactTopCollapsedItemCount.set(3);
    desktop.settle();
    EXPECT_EQ(bars[0]->frame.maxX(), 1320 - 8);
    EXPECT_EQ(strip.frame.maxX(), bars[0]->frame.maxX());

    // Another application's menus, which are there a moment after its notice. The bar moves and is not made anew.
    auto& painter = desktop.launch("Painter");
    desktop.settle();
    painter.activate();
    desktop.settle();
    EXPECT_EQ(bars[0]->frame.minX(), 0);
    desktop.menus.setTitles(painter, {10, 50, 500}, 560);
    desktop.run(1s);
    EXPECT_EQ(bars[0]->frame, (Frame{568, 876, 1312 - 568, 24}));
    desktop.settings().autoDetectMacOSMenuWidth.set(false);
    desktop.settle();
    EXPECT_EQ(bars[0]->frame.minX(), 0);
    ASSERT_EQ(desktop.panels(ui::PanelKind::Bar), bars);

    // A further item moves in on the left; one ends.
    desktop.settings().compactTopCollapsedItemCount.set(10);
    auto& late = desktop.launch("Late", {.policy = ActivationPolicy::Accessory});
    desktop.settle();
    desktop.menus.setItems(late, {100}, {1440, 0}, 180);
    desktop.run(1s);
    EXPECT_EQ(bars[0]->frame.maxX(), 1160 - 8);
    desktop.menus.unlistOwnedBy(late.pid());
    late.quit();
    desktop.run(1s);
    EXPECT_EQ(bars[0]->frame.maxX(), 1260 - 8) << "fewer than ten: all of them";

    desktop.settings().barEdge.set(MorvelEdge::Bottom);
    EXPECT_TRUE(desktop.panels(ui::PanelKind::Companion).empty());
    EXPECT_EQ(desktop.barFrame(), (Frame{0, 0, 1440, 44}));
}

TEST(CompactTop, ExpandsAndCollapsesByItsToggle) {
    CompactDesktop desktop;
    for (const char* title : {"one", "two", "three", "four", "five", "six"}) desktop.editor.open({.title = title});
    desktop.defaults().set("groupingMode", {std::string("never")});
    desktop.startMorvel();
    EXPECT_EQ(desktop.strip(), "five four one six* three two");
    EXPECT_EQ(desktop.toggle().accessibilityLabel(), "Expand status icons");
    EXPECT_EQ(sim::imageName(desktop.toggle().imageView().image()), "symbol:chevron.right");

    desktop.click(desktop.toggle());
    EXPECT_EQ(desktop.barFrame(), (Frame{408, 876, 1252 - 408, 24}));
    EXPECT_TRUE(desktop.controller().isCompactTopExpanded());
    EXPECT_EQ(desktop.toggle().accessibilityLabel(), "Collapse status icons");
    EXPECT_EQ(desktop.toggle().tooltip(), "Collapse status icons");
    EXPECT_EQ(sim::imageName(desktop.toggle().imageView().image()), "symbol:chevron.left");
    EXPECT_EQ(desktop.strip(), "Editorx6") << "what no longer fits is grouped while the bar is expanded";

    // Made anew for another setting it is still expanded.
    desktop.settings().compactTopRightBuffer.set(300);
    EXPECT_EQ(desktop.toggle().accessibilityLabel(), "Collapse status icons");
    EXPECT_EQ(desktop.barFrame().maxX(), 1252);
    desktop.settings().autoDetectMacOSItemsWidth.set(false);
    EXPECT_EQ(desktop.barFrame().maxX(), 1140) << "as the setting has it";
    EXPECT_TRUE(desktop.toggle().accessibilityPress());
    EXPECT_EQ(desktop.barFrame().maxX(), 1340);
    EXPECT_EQ(desktop.strip().substr(0, 9), "five four");
}

TEST(CompactTop, TheToggleHidesWithItsBar) {
    CompactDesktop desktop;
    desktop.defaults().set("autoHide", {true});
    desktop.startMorvel();
    const auto isToggleSeen = [&] {
        const auto panels = desktop.panels(ui::PanelKind::Companion);
        return panels.size() == 1 && desktop.isSeen(*panels[0]);
    };
    EXPECT_EQ(desktop.panels(ui::PanelKind::Companion).size(), 1u);
    EXPECT_FALSE(isToggleSeen());
    desktop.controller().view().pinReveal();
    desktop.run(1s);
    EXPECT_TRUE(isToggleSeen());
    EXPECT_EQ(desktop.panels(ui::PanelKind::Companion)[0]->frame.maxX(), desktop.barFrame().maxX());
    desktop.controller().view().unpinReveal();
    desktop.run(3s);
    EXPECT_FALSE(isToggleSeen());

    // The menu bar goes from the display and comes back, while the bar is hidden.
    auto displays = sim::oneDisplay(1440, 900);
    displays[0].menuBarHeight = 0;
    desktop.rearrange(displays);
    desktop.run(1s);
    EXPECT_TRUE(desktop.panels(ui::PanelKind::Companion).empty());
    desktop.rearrange(sim::oneDisplay(1440, 900));
    desktop.run(1s);
    EXPECT_EQ(desktop.panels(ui::PanelKind::Companion).size(), 1u);
    EXPECT_FALSE(isToggleSeen());
    desktop.settings().autoHide.set(false);
    EXPECT_TRUE(isToggleSeen());
}

TEST(CompactTop, AsksOthersLittleAndNobodyWhileNothingHappens) {
    CompactDesktop desktop;
    auto& painter = desktop.launch("Painter");
    desktop.menus.setTitles(painter, {10, 50, 100, 200, 300, 400, 500, 600, 700}, 760);
    auto& other = desktop.launch("Other");
    desktop.startMorvel();
    desktop.run(20s);
    const auto questions = [&] {
        std::vector<int> asked;
        for (const sim::SimApp* app : {&painter, &desktop.editor, &desktop.control, &desktop.extra, &other})
            asked.push_back(desktop.menus.questions(app->pid()));
        return asked;
    };
    // What is asked when the painter comes to the front, and in ten minutes afterwards with the editor in front.
    const auto whatIsAsked = [&] {
        questions();
        painter.activate();
        desktop.run(2s);
        const auto atActivation = questions();
        desktop.editor.activate();
        desktop.run(2s);
        questions();
        desktop.run(10min);
        return std::pair(atActivation, questions());
    };
    const auto inCompact = whatIsAsked();
    // Tracking the windows has its own costs, which a bar at the bottom shows.
    desktop.settings().barEdge.set(MorvelEdge::Bottom);
    desktop.settle();
    auto expected = whatIsAsked();
    EXPECT_EQ(inCompact.second, expected.second) << "idle costs nothing";
    expected.first[0] += 2 * 4;  // its menu bar, the titles, the last one's frame; and once more
    EXPECT_EQ(inCompact.first, expected.first) << "the editor, whose menus went, is not asked";
}

TEST(CompactTop, AHungApplicationCostsNoMoreThanItsFirstSilence) {
    CompactDesktop desktop;
    desktop.startMorvel();
    desktop.run(20s);
    auto& stuck = desktop.launch("Stuck");
    desktop.menus.setTitles(stuck, {10, 50}, 760);
    desktop.run(1s);
    stuck.hang();
    desktop.control.hang();
    desktop.menus.setItems(desktop.extra, {50, 60, 20}, {1440, 0}, 70);  // so that the items are probed again
    desktop.menus.questions(desktop.control.pid());
    stuck.activate();
    desktop.settle();
    EXPECT_EQ(desktop.menus.questions(desktop.control.pid()), 1);
    EXPECT_EQ(desktop.barFrame(), (Frame{0, 876, 1340, 24})) << "the window list still tells which items come first";
    stuck.recover();
    desktop.run(1s);
    EXPECT_EQ(desktop.barFrame().minX(), 768);
}

TEST(CompactTop, EachDisplayHasTheGapsOfItsOwnMenuBar) {
    auto displays = sim::twoDisplays();
    CompactDesktop desktop(displays);
    auto& left = desktop.editor.open({.x = 100, .y = 100, .title = "left"});
    auto& right = desktop.editor.open({.x = 1600, .y = 100, .title = "right"});
    left.focus();
    desktop.startMorvel();
    EXPECT_EQ(desktop.barFrame(0), (Frame{408, 876, 1440 - 408 - 100, 24}));
    EXPECT_EQ(desktop.barFrame(1), (Frame{1440, 1056, 1920 - 200, 24}))
        << "no titles there, and no items that are told";

    // The menus of one application go with its focus, without any notice but that.
    desktop.menus.setTitles(desktop.editor, {1450, 1500}, 1700, 900 - 1080);
    right.focus();
    EXPECT_EQ(desktop.barFrame(0).minX(), 0);
    EXPECT_EQ(desktop.barFrame(1).minX(), 1708);

    // A display without a menu bar has nothing to leave free, and no toggle.
    displays[1].menuBarHeight = 0;
    desktop.rearrange(displays);
    desktop.run(1s);
    EXPECT_EQ(desktop.barFrame(1).minX(), 1440);
    EXPECT_EQ(desktop.barFrame(1).width, 1920);
    EXPECT_EQ(desktop.controller(1).rightStrip(), nullptr);
    EXPECT_EQ(desktop.panels(ui::PanelKind::Companion).size(), 1u);
    desktop.unplug(DisplayID{1});
    desktop.run(1s);
    EXPECT_EQ(desktop.toolkit().panels().size(), 1u);
}

/// The same display with a camera housing, 140 points wide in the middle.
class NotchedDesktop : public CompactDesktop {
public:
    NotchedDesktop() {
        Screen& screen = screens().list[0];
        screen.auxiliaryTopLeft = {0, 876, 650, 24};
        screen.auxiliaryTopRight = {790, 876, 650, 24};
        defaults().set("windowlessAppsMode", {std::string("off")});
        defaults().set("showStartButton", {false});
    }
    void open(std::initializer_list<const char*> titles) {
        for (const char* title : titles) editor.open({.title = title});
    }
    /// From where to where the buttons of a kind reach on the display.
    template <class Button>
    std::vector<std::pair<double, double>> spans() {
        std::vector<std::pair<double, double>> found;
        for (const Button* button : all<Button>(bar())) {
            const auto frame = button->boundsInRoot();
            found.emplace_back(barFrame().minX() + frame.minX(), barFrame().minX() + frame.maxX());
        }
        return found;
    }
    /// Where the front application's titles end, as they are told from the next activation on.
    void endTitlesAt(double x) {
        menus.setTitles(editor, {10, x - 50}, x);
        launch("Other").activate();
        settle();
        editor.activate();
        settle();
    }
};

TEST(CompactTop, WindowsStayClearOfACameraHousing) {
    NotchedDesktop desktop;
    desktop.open({"one", "two", "three"});
    desktop.startMorvel();
    ASSERT_EQ(desktop.barFrame().minX(), 408);
    const auto spans = [&] { return desktop.spans<WindowButton>(); };
    ASSERT_EQ(desktop.strip(), "one three* two");
    EXPECT_LE(spans()[0].second, 650);
    EXPECT_EQ(spans()[1].first, 790) << "the second would reach under the housing";
    EXPECT_EQ(spans()[2].first, 944);

    // Room for none before the housing, and for three behind it, though the room of both would do for four.
    desktop.endTitlesAt(490);
    ASSERT_EQ(spans().size(), 3u);
    EXPECT_EQ(spans()[0].first, 790);
    EXPECT_LE(spans()[2].second, desktop.barFrame().maxX() - kCompactTopStripWidth);
    desktop.open({"four"});
    EXPECT_EQ(desktop.strip(), "Editorx4") << "the last one would be cut off";

    // Menus that end beyond the housing: the bar begins there.
    desktop.endTitlesAt(850);
    EXPECT_EQ(desktop.spans<GroupedAppButton>()[0].first, 858 + 8 + 4);
    desktop.settings().compactAtTop.set(false);
    desktop.open({"five", "six"});
    ASSERT_EQ(spans().size(), 6u);
    EXPECT_LE(spans()[3].second, 650);
    EXPECT_EQ(spans()[4].first, 790) << "over the whole menu bar the housing is there as well";
    desktop.settings().barEdge.set(MorvelEdge::Bottom);
    EXPECT_EQ(spans()[4].first - spans()[3].second, 4);
}

TEST(CompactTop, PinnedItemsAndTheToggleStayClearOfACameraHousing) {
    NotchedDesktop desktop;
    std::vector<PinnedItem> items;
    for (const char* name : {"a", "b", "c"}) items.push_back(PinnedItem::folder(std::string("/") + name, name));
    desktop.defaults().values["pinnedApps"] = {*PinnedItemsCoding::encode(items)};
    desktop.open({"one", "two"});
    desktop.menus.setTitles(desktop.editor, {10, 500}, 542);
    desktop.startMorvel();
    const auto pins = [&] { return desktop.spans<PinnedAppButton>(); };
    ASSERT_EQ(pins().size(), 3u);
    EXPECT_EQ(pins()[0].first, 558);
    EXPECT_LE(pins()[1].second, 650);
    EXPECT_EQ(pins()[2].first, 790);
    EXPECT_EQ(desktop.spans<WindowButton>()[0].first, pins()[2].second + 4);
    EXPECT_EQ(desktop.spans<WindowButton>().size(), 2u) << "what the housing takes is not taken twice";

    // Status items up to the housing: the bar ends under it, and the toggle stands before it with what goes with it.
    desktop.menus.setItems(desktop.extra, {100, 150, 150, 162}, {1440, 0}, 70);
    desktop.endTitlesAt(300);
    desktop.click(desktop.toggle());
    EXPECT_EQ(desktop.barFrame().maxX(), 808 - 8);
    const sim::SimPanel& strip = *desktop.panels(ui::PanelKind::Companion)[0];
    EXPECT_EQ(strip.frame.maxX(), 650);
    EXPECT_EQ(desktop.strip(), "Editorx2");
    desktop.click(desktop.toggle());
    EXPECT_EQ(strip.frame.maxX(), desktop.barFrame().maxX());
    EXPECT_EQ(desktop.spans<WindowButton>().size(), 2u);
}

TEST(CompactTop, TheAppleMenuIsThatOfTheApplicationInFront) {
    CompactDesktop desktop;
    desktop.startMorvel();
    const auto& actions = desktop.delegate().barActions();
    ASSERT_TRUE(actions.onAppleMenu);
    actions.onAppleMenu();
    desktop.settle();
    EXPECT_EQ(desktop.journal().count(desktop.menus.title(desktop.editor, 0), "AXPress"), 1);
    const size_t deeds = desktop.journal().deeds().size();
    desktop.menus.removeTitles(desktop.editor);
    actions.onAppleMenu();
    desktop.menus.setTitles(desktop.editor, {}, 0);
    actions.onAppleMenu();
    desktop.editor.hang();
    actions.onAppleMenu();
    desktop.workspace().frontmost.reset();
    actions.onAppleMenu();
    desktop.settle();
    EXPECT_EQ(desktop.journal().deeds().size(), deeds);
}

TEST(CompactTop, ExistsOnlyWhereThereIsAMenuBar) {
    CompactDesktop desktop;
    desktop.screens().thickness = 0;
    desktop.startMorvel();
    EXPECT_EQ(desktop.barFrame(), (Frame{0, 856, 1440, 44})) << "what takes room at the top there is another's panel";
    EXPECT_EQ(desktop.controller().rightStrip(), nullptr);
    EXPECT_FALSE(desktop.delegate().barActions().onAppleMenu);
    const size_t buttons = desktop.all<StartButton>(desktop.bar()).size();
    desktop.settings().showAppleMenuButton.set(true);
    EXPECT_EQ(desktop.all<StartButton>(desktop.bar()).size(), buttons);
}

}  // namespace
}  // namespace morvel
