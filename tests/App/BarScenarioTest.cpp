#include "App/BarDesktop.h"

namespace morvel {
namespace {

TEST(Bar, FollowsTheWindowsOfADay) {
    BarDesktop desktop;
    auto& editor = desktop.launch("Editor");
    auto& notes = editor.open({.title = "Notes"});
    desktop.startMorvel();
    EXPECT_EQ(desktop.strip(), "Notes");

    auto& mail = desktop.launch("Mail");
    desktop.settle();
    EXPECT_EQ(desktop.strip(), "Notes [Mail]") << "a running application without windows is a dimmed tile";
    auto& inbox = mail.open({.title = "Inbox"});
    inbox.focus();
    desktop.settle();
    EXPECT_EQ(desktop.strip(), "Notes Inbox*") << "its first window takes over the tile's place";

    editor.open({.title = "Draft"});
    desktop.settle();
    EXPECT_EQ(desktop.strip(), "Notes Draft Inbox*") << "a new window stands beside those of its application";

    notes.setTitle("A first");
    notes.setTitle("Another title");
    desktop.run(199ms);
    EXPECT_EQ(desktop.strip(), "Notes Draft Inbox*");
    desktop.run(1ms);
    EXPECT_EQ(desktop.strip(), "Another title Draft Inbox*") << "a title changes in place, once it has come to rest";

    inbox.close();
    desktop.settle();
    EXPECT_EQ(desktop.strip(), "Another title Draft [Mail]");
    mail.killSilently();
    desktop.run(15s);
    EXPECT_EQ(desktop.strip(), "Another title Draft");
}

TEST(Bar, AClickRaisesASecondMinimizesAThirdRestores) {
    BarDesktop desktop;
    auto& one = desktop.launch("One").open({.title = "one"});
    auto& two = desktop.launch("Two").open({.title = "two"});
    desktop.startMorvel();
    two.focus();
    desktop.settle();
    EXPECT_EQ(desktop.strip(), "one two*");

    desktop.click(desktop.button("one"));
    EXPECT_TRUE(one.isFocused());
    EXPECT_EQ(desktop.strip(), "one* two");
    desktop.click(desktop.button("one"));
    EXPECT_TRUE(one.isMinimized());
    desktop.click(desktop.button("one"));
    EXPECT_FALSE(one.isMinimized());
    EXPECT_TRUE(one.isFocused());
    EXPECT_EQ(desktop.strip(), "one* two");
}

TEST(Bar, AChangedTitleTouchesOnlyItsButton) {
    BarDesktop desktop;
    auto& app = desktop.launch("Editor");
    auto& changing = app.open({.title = "before"});
    for (int i = 0; i < 5; ++i) app.open({.title = "still " + std::to_string(i)});
    desktop.startMorvel();
    desktop.run(1s);
    sim::SimSurface& surface = desktop.toolkit().panels().front()->surface;
    const WindowButton* button = &desktop.button("before");
    surface.clearRepaints();
    changing.setTitle("after");
    desktop.run(1s);
    EXPECT_EQ(&desktop.button("after"), button) << "the button is kept, and with it its hover";
    EXPECT_EQ(surface.repaints(button->titleLabel()).content, 1);
    int others = 0;
    for (const WindowButton* other : desktop.all<WindowButton>(desktop.bar()))
        if (other != button) others += surface.repaints(*other).all() + surface.repaints(other->titleLabel()).all();
    EXPECT_EQ(others, 0);
}

TEST(Bar, AThousandEventsInOneTurnCostOneProjection) {
    BarDesktop desktop;
    auto& app = desktop.launch("Editor");
    desktop.startMorvel();
    sim::SimSurface& surface = desktop.toolkit().panels().front()->surface;
    for (int i = 0; i < 5; ++i) app.open({.title = "w" + std::to_string(i)});
    desktop.settle();
    WindowButton& button = desktop.button("w3");
    surface.clearRepaints();
    WindowIDMint mint(7);
    auto& store = const_cast<WindowStore&>(*desktop.delegate().windowStore());
    for (int i = 0; i < 1000; ++i) store.apply(event::TitleChanged{button.snapshot().id, "title " + std::to_string(i)});
    EXPECT_EQ(surface.repaints(button.titleLabel()).content, 0) << "nothing is rebuilt inside the turn";
    desktop.settle();
    EXPECT_EQ(surface.repaints(button.titleLabel()).content, 1);
    EXPECT_EQ(button.titleLabel().text(), "title 999");
}

TEST(Bar, ATitleIsShownAtOnceAndTheOtherWindowsAreLookedAtLater) {
    BarDesktop desktop;
    auto& app = desktop.launch("Editor");
    auto& changing = app.open({.title = "before"});
    auto& leaving = app.open({.title = "leaves unnoticed"});
    desktop.startMorvel();
    desktop.run(1s);
    const auto queries = [&desktop] { return desktop.windowServer().spaceQueries; };
    const int before = queries();
    desktop.windowServer().windowSpaces[leaving.number()] = {SpaceID(99)};  // the system tells nobody
    changing.setTitle("after");
    desktop.run(250ms);
    EXPECT_EQ(desktop.strip(), "after leaves unnoticed");
    EXPECT_EQ(queries(), before);
    // The former title returns in the turn of a whole look, and the whole look must not take it for unchanged.
    auto& store = const_cast<WindowStore&>(*desktop.delegate().windowStore());
    const WindowID id = desktop.button("after").snapshot().id;
    store.apply(event::FullscreenChanged{desktop.button("leaves unnoticed").snapshot().id, false});
    store.apply(event::TitleChanged{id, "before"});
    desktop.settle();
    EXPECT_EQ(desktop.strip(), "before");
    desktop.windowServer().windowSpaces[leaving.number()] = {*desktop.windowServer().activeSpace()};
    store.apply(event::TitleChanged{id, "again"});
    desktop.run(1s);
    EXPECT_EQ(desktop.strip(), "again leaves unnoticed");
    const int settled = queries();
    desktop.run(5s);
    EXPECT_EQ(queries(), settled) << "no look without a change";

    desktop.settings().groupingMode.set(GroupingMode::Always);
    desktop.settle();
    desktop.click(desktop.group("Editor"));
    store.apply(event::TitleChanged{id, "in a row"});
    desktop.settle();
    const auto rows = desktop.all<GroupRowButton>(desktop.toolkit().shownPopover()->surface.root());
    EXPECT_TRUE(std::ranges::any_of(rows, [](const auto* row) { return row->snapshot().title == "in a row"; }));
}

TEST(Bar, GroupsWhenCrowdedAndListsAGroupsWindows) {
    BarDesktop desktop(sim::oneDisplay(840, 600));
    auto& editor = desktop.launch("Editor");
    auto& mail = desktop.launch("Mail");
    for (const char* title : {"a", "b", "c", "d"}) editor.open({.title = title});
    auto& inbox = mail.open({.title = "Inbox"});
    desktop.startMorvel();
    EXPECT_EQ(desktop.strip(), "a b c d Inbox");
    auto& extra = editor.open({.title = "e"});
    desktop.settle();
    EXPECT_EQ(desktop.strip(), "Editorx5 Mailx1");

    desktop.click(desktop.group("Mail"));
    EXPECT_TRUE(inbox.isFocused()) << "a group of one needs no list";
    ASSERT_EQ(desktop.toolkit().shownPopover(), nullptr);

    desktop.click(desktop.group("Editor"));
    sim::SimPopover* popover = desktop.toolkit().shownPopover();
    ASSERT_NE(popover, nullptr);
    EXPECT_EQ(popover->size, (Size{280, 5 * 36}));
    EXPECT_EQ(popover->edge, ui::Edge::Top);
    auto rows = desktop.all<GroupRowButton>(popover->surface.root());
    ASSERT_EQ(rows.size(), 5u);
    desktop.click(const_cast<ui::ImageButton&>(rows[1]->closeButton()));
    EXPECT_EQ(desktop.strip(), "a e c d Inbox*") << "one fewer fits again; the newest took the closed one's place";
    EXPECT_EQ(desktop.toolkit().shownPopover(), nullptr);

    editor.open({.title = "f"});
    desktop.settle();
    desktop.click(desktop.group("Editor"));
    popover = desktop.toolkit().shownPopover();
    ASSERT_NE(popover, nullptr);
    // Listed as they stood side by side: a e c d f.
    desktop.click(*desktop.all<GroupRowButton>(popover->surface.root())[1]);
    EXPECT_TRUE(extra.isFocused());
    EXPECT_EQ(desktop.toolkit().shownPopover(), nullptr) << "the list has done its work";

    desktop.click(desktop.group("Editor"));
    desktop.click(desktop.group("Editor"));
    EXPECT_EQ(desktop.toolkit().shownPopover(), nullptr) << "a second click puts the list away";
    desktop.click(desktop.group("Editor"));
    desktop.click(desktop.group("Mail"));
    EXPECT_EQ(desktop.toolkit().shownPopover(), nullptr) << "and so does going on to another application";
    desktop.click(desktop.group("Editor"));
    ASSERT_NE(desktop.toolkit().shownPopover(), nullptr);
    desktop.toolkit().pressOutside();
    desktop.settle();
    EXPECT_EQ(desktop.toolkit().shownPopover(), nullptr);
}

TEST(Bar, ShowsTheSpaceThatItsDisplayShows) {
    BarDesktop desktop;
    const DisplayID display = *desktop.screens().screens().front().displayID;
    const SpaceID first = *desktop.currentSpace(display);
    const SpaceID second = desktop.addSpace(display);
    auto& app = desktop.launch("Editor");
    app.open({.title = "here"});
    app.open({.title = "there", .space = second});
    desktop.launch("Idle");
    desktop.startMorvel();
    EXPECT_EQ(desktop.strip(), "here [Idle]");
    desktop.switchSpace(display, second);
    desktop.run(1s);
    EXPECT_EQ(desktop.strip(), "there") << "tiles belong to the first Space";
    desktop.settings().windowSpaceMode.set(WindowSpaceMode::AllSpaces);
    desktop.settle();
    EXPECT_EQ(desktop.strip(), "there here");
    desktop.switchSpace(display, first);
    desktop.run(1s);
    EXPECT_EQ(desktop.strip(), "there here [Idle]");
}

TEST(Bar, EveryDisplayHasItsOwnAndKeepsItWhileOthersComeAndGo) {
    BarDesktop desktop(sim::twoDisplays());
    auto& app = desktop.launch("Editor");
    auto& window = app.open({.x = 100, .y = 100, .title = "left"});
    desktop.startMorvel();
    EXPECT_EQ(desktop.strip(0), "left");
    EXPECT_EQ(desktop.strip(1), "");

    desktop.rightClick(desktop.button("left"));
    const std::string other = desktop.screens().screens()[1].name;
    desktop.choose({"Move to Display", other});
    EXPECT_EQ(desktop.strip(0), "");
    EXPECT_EQ(desktop.strip(1), "left");
    EXPECT_EQ(window.width(), 640) << "moving keeps the size";

    const ui::View* kept = &desktop.bar(0);
    const auto spec = sim::twoDisplays()[1];
    desktop.unplug(*desktop.screens().screens()[1].displayID);
    desktop.run(1s);
    EXPECT_EQ(desktop.toolkit().panels().size(), 1u);
    EXPECT_EQ(&desktop.bar(0), kept);
    desktop.plug(spec);
    desktop.run(1s);
    EXPECT_EQ(desktop.toolkit().panels().size(), 2u);
    EXPECT_EQ(&desktop.bar(0), kept);

    // For a moment a waking system reports no displays at all.
    const auto all = sim::twoDisplays();
    desktop.rearrange({});
    desktop.run(50ms);
    desktop.rearrange(all);
    desktop.run(1s);
    EXPECT_EQ(desktop.toolkit().panels().size(), 2u);
    EXPECT_EQ(&desktop.bar(0), kept);
}

TEST(Bar, SettingsAreSeenAtOnce) {
    BarDesktop desktop;
    auto& app = desktop.launch("Editor");
    app.open({.title = "one"});
    app.open({.title = "two"});
    desktop.launch("Idle");
    desktop.startMorvel();
    SettingsStore& settings = desktop.settings();
    WindowButton* one = &desktop.button("one");

    settings.windowButtonWidthMode.set(WindowButtonWidthMode::Custom);
    settings.windowButtonCustomWidth.set(200);
    desktop.settle();
    EXPECT_EQ(one->frame().width, 200) << "the same button, wider";
    settings.showButtonBorders.set(false);
    EXPECT_EQ(one->borderWidth(), 0);
    settings.groupingMode.set(GroupingMode::Always);
    desktop.settle();
    EXPECT_EQ(desktop.strip(), "Editorx2 [icon]");
    settings.groupingMode.set(GroupingMode::Never);
    settings.windowlessAppsMode.set(WindowlessAppsMode::Off);
    desktop.settle();
    EXPECT_EQ(desktop.strip(), "one two");
    settings.windowBlacklist.set({"com.example.editor"});
    desktop.settle();
    EXPECT_EQ(desktop.strip(), "");

    settings.barHeight.set(30);
    desktop.settle();
    ASSERT_EQ(desktop.toolkit().panels().size(), 1u);
    EXPECT_EQ(desktop.toolkit().panels().front()->frame, (Rect<ScreenSpace>{0, 0, 1440, 30}));
    settings.compactAtTop.set(false);
    settings.matchMenuBarHeight.set(false);
    settings.barEdge.set(MorvelEdge::Top);
    desktop.settle();
    EXPECT_EQ(desktop.toolkit().panels().front()->frame, (Rect<ScreenSpace>{0, 870, 1440, 30}));
    settings.clampWindows.set(false);
    EXPECT_FALSE(desktop.toolkit().panels().front()->reservesSpace);
}

TEST(Bar, TakesTheDesktopOverAsItFindsIt) {
    BarDesktop desktop;
    auto& editor = desktop.launch("Editor");
    editor.open({.title = "one"});
    editor.open({.title = "two"}).focus();
    desktop.launch("Mail").open({.title = "Inbox"});
    desktop.defaults().set("theme", {std::string("dark")});
    desktop.startMorvel();
    EXPECT_EQ(desktop.strip(), "one two* Inbox") << "what has the focus is marked before it moves for the first time";
    EXPECT_EQ(desktop.toolkit().appearance(), ui::Appearance::Dark);
    desktop.settings().theme.set(Theme::Light);
    EXPECT_EQ(desktop.toolkit().appearance(), ui::Appearance::Light);
    desktop.settings().theme.set(Theme::System);
    EXPECT_EQ(desktop.toolkit().appearance(), ui::Appearance::System);
}

TEST(Bar, WaitsForThePermissionAndQuitsFromItsMenu) {
    BarDesktop desktop;
    desktop.launch("Editor").open({.title = "one"});
    desktop.accessibility().trusted = false;
    bool quit = false;
    desktop.platform().terminate = [&] { quit = true; };
    desktop.startMorvel();
    EXPECT_TRUE(desktop.toolkit().panels().empty());
    desktop.accessibility().trusted = true;
    desktop.run(999ms);
    EXPECT_TRUE(desktop.toolkit().panels().empty());
    desktop.run(1ms);
    EXPECT_EQ(desktop.strip(), "one");

    desktop.rightClick(desktop.bar());
    EXPECT_EQ(desktop.toolkit().menuTitles(), (std::vector<std::string>{"Morvel Settings…", "-", "Quit Morvel"}));
    desktop.choose({"Quit Morvel"});
    EXPECT_TRUE(quit);
    desktop.quitMorvel();
    desktop.run(20s);
    EXPECT_TRUE(desktop.toolkit().panels().empty());
    EXPECT_EQ(desktop.mainLoop().armedTimers(), 0u) << "nothing is left running";
}

TEST(Bar, ABarMayGoWhileItsMenuOrPopoverIsOpen) {
    BarDesktop desktop;
    auto& app = desktop.launch("Editor");
    auto& window = app.open({.title = "one"});
    app.open({.title = "two"});
    desktop.startMorvel();
    desktop.rightClick(desktop.button("one"));
    window.close();
    desktop.settle();
    desktop.settings().barHeight.set(50);
    desktop.settle();
    desktop.choose({"Close Window"});
    EXPECT_EQ(desktop.strip(), "two") << "the action of a menu whose window is gone does nothing";

    desktop.settings().groupingMode.set(GroupingMode::Always);
    app.open({.title = "three"});
    desktop.settle();
    desktop.click(desktop.group("Editor"));
    ASSERT_NE(desktop.toolkit().shownPopover(), nullptr);
    desktop.settings().barHeight.set(40);
    desktop.settle();
    EXPECT_EQ(desktop.toolkit().shownPopover(), nullptr);
    EXPECT_EQ(desktop.strip(), "Editorx2");
}

}  // namespace
}  // namespace morvel
