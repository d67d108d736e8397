#include "App/BarDesktop.h"
#include "UI/VisualEffectView.h"

namespace morvel {
namespace {

TEST(Bar, FollowsTheWindowsOfADay) {
    BarDesktop desktop;
    auto& editor = desktop.launch("Editor");
    auto& notes = editor.open({.title = "Notes"});
    desktop.startMorvel();
    EXPECT_EQ(desktop.strip(), "Notes");

    auto& mail = desktop.launch("Mail");
    EXPECT_EQ(desktop.strip(), "Notes [Mail]") << "a running application without windows is a dimmed tile";
    EXPECT_EQ(desktop.button("Mail").alpha(), 0.6);
    EXPECT_EQ(desktop.button("Mail").tooltip(), "Mail — no window open");
    auto& inbox = mail.open({.title = "Inbox"});
    inbox.focus();
    EXPECT_EQ(desktop.strip(), "Notes Inbox*") << "its first window takes over the tile's place";

    editor.open({.title = "Draft"});
    EXPECT_EQ(desktop.strip(), "Notes Draft Inbox*") << "a new window stands beside those of its application";

    notes.setTitle("A first");
    notes.setTitle("Another title");
    desktop.run(199ms);
    EXPECT_EQ(desktop.strip(), "Notes Draft Inbox*");
    desktop.run(1ms);
    EXPECT_EQ(desktop.strip(), "Another title Draft Inbox*") << "a title changes in place, once it has come to rest";

    inbox.close();
    EXPECT_EQ(desktop.strip(), "Another title Draft [Mail]");
    mail.killSilently();
    desktop.run(15s);
    EXPECT_EQ(desktop.strip(), "Another title Draft");
}

TEST(Bar, AThousandTitlesInOneTurnPaintOneButtonOnce) {
    BarDesktop desktop;
    desktop.open("Editor", {"before", "still", "as still"});
    desktop.startMorvel();
    desktop.run(1s);
    sim::SimSurface& surface = desktop.toolkit().panels().front()->surface;
    const WindowButton& button = desktop.button("before");
    surface.clearRepaints();
    auto& store = const_cast<WindowStore&>(*desktop.delegate().windowStore());
    for (int i = 0; i < 1000; ++i) store.apply(event::TitleChanged{button.snapshot().id, "title " + std::to_string(i)});
    EXPECT_EQ(surface.repaints(button.titleLabel()).content, 0) << "nothing is rebuilt inside the turn";
    desktop.run(2s);
    EXPECT_EQ(surface.repaints(button.titleLabel()).content, 1);
    EXPECT_EQ(&desktop.button("title 999"), &button) << "the button is kept, and with it its hover";
    for (const WindowButton* other : desktop.all<WindowButton>(desktop.bar()))
        EXPECT_EQ(surface.repaints(other->titleLabel()).content, other == &button ? 1 : 0);
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
    EXPECT_EQ(desktop.strip(), "before");
    desktop.windowServer().windowSpaces[leaving.number()] = {*desktop.windowServer().activeSpace()};
    store.apply(event::TitleChanged{id, "again"});
    desktop.run(1s);
    EXPECT_EQ(desktop.strip(), "again leaves unnoticed");
    const int settled = queries();
    desktop.run(5s);
    EXPECT_EQ(queries(), settled) << "no look without a change";

    desktop.settings().groupingMode.set(GroupingMode::Always);
    desktop.click(desktop.group("Editor"));
    store.apply(event::TitleChanged{id, "in a row"});
    desktop.settle();
    EXPECT_TRUE(std::ranges::any_of(desktop.listed<GroupRowButton>(),
                                    [](const auto* row) { return row->snapshot().title == "in a row"; }));
}

TEST(Bar, GroupsWhenCrowdedAndListsAGroupsWindows) {
    BarDesktop desktop(sim::oneDisplay(840, 600));
    auto& editor = desktop.open("Editor", {"a", "b", "c", "d"});
    auto& inbox = desktop.launch("Mail").open({.title = "Inbox"});
    desktop.startMorvel();
    EXPECT_EQ(desktop.strip(), "a b c d Inbox");
    auto& extra = editor.open({.title = "e"});
    EXPECT_EQ(desktop.strip(), "Editorx5 Mailx1");

    desktop.click(desktop.group("Mail"));
    EXPECT_TRUE(inbox.isFocused()) << "a group of one needs no list";
    ASSERT_EQ(desktop.toolkit().shownPopover(), nullptr);

    desktop.click(desktop.group("Editor"));
    sim::SimPopover* popover = desktop.toolkit().shownPopover();
    ASSERT_NE(popover, nullptr);
    EXPECT_EQ(popover->size, (Size{280, 5 * 36}));
    EXPECT_EQ(popover->edge, ui::Edge::Top);
    desktop.click(const_cast<ui::ImageButton&>(desktop.listed<GroupRowButton>().at(1)->closeButton()));
    EXPECT_EQ(desktop.strip(), "a e c d Inbox*") << "one fewer fits again; the newest took the closed one's place";
    EXPECT_EQ(desktop.toolkit().shownPopover(), nullptr);

    editor.open({.title = "f"});
    desktop.click(desktop.group("Editor"));
    // Listed as they stood side by side: a e c d f.
    desktop.click(*desktop.listed<GroupRowButton>().at(1));
    EXPECT_TRUE(extra.isFocused());
    EXPECT_EQ(desktop.toolkit().shownPopover(), nullptr) << "the list has done its work";

    desktop.click(desktop.group("Editor"));
    desktop.click(desktop.group("Editor"));
    EXPECT_EQ(desktop.toolkit().shownPopover(), nullptr) << "a second click puts the list away";
    desktop.click(desktop.group("Editor"));
    desktop.click(desktop.group("Mail"));
    EXPECT_EQ(desktop.toolkit().shownPopover(), nullptr) << "and so does going on to another application";
}

TEST(Bar, SettingsAreSeenAtOnce) {
    BarDesktop desktop;
    desktop.open("Editor", {"one", "two"});
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
    settings.showButtonBorders.set(true);
    EXPECT_EQ(one->borderWidth(), 0.5);
    settings.groupingMode.set(GroupingMode::Always);
    EXPECT_EQ(desktop.strip(), "Editorx2 [icon]");
    settings.windowBlacklist.set({"com.example.editor"});
    EXPECT_EQ(desktop.strip(), "[icon]");
    using enum BarBlurIntensity;
    for (const auto& [intensity, material] : {std::pair(Subtle, 6), {Medium, 13}, {Strong, 7}}) {
        settings.barBlurIntensity.set(intensity);
        const auto shown = desktop.all<ui::VisualEffectView>(desktop.bar());
        ASSERT_EQ(shown.size(), 1u) << "the former one is gone";
        EXPECT_EQ(static_cast<int>(shown[0]->material()), material);
        EXPECT_EQ(desktop.bar().subviews().front(), shown[0]) << "below everything";
    }
    settings.barHeight.set(30);
    settings.compactAtTop.set(false);
    settings.matchMenuBarHeight.set(false);
    settings.barEdge.set(MorvelEdge::Top);
    desktop.settle();
    ASSERT_EQ(desktop.toolkit().panels().size(), 1u);
    EXPECT_EQ(desktop.toolkit().panels().front()->frame, (Rect<ScreenSpace>{0, 870, 1440, 30}));
    settings.clampWindows.set(false);
    EXPECT_FALSE(desktop.toolkit().panels().front()->reservesSpace);
}

TEST(Bar, TakesTheDesktopOverAsItFindsIt) {
    BarDesktop desktop;
    desktop.open("Editor", {"one", "two"}).windows()[1]->focus();
    desktop.open("Mail", {"Inbox"});
    desktop.defaults().set("theme", {std::string("dark")});
    desktop.startMorvel();
    EXPECT_EQ(desktop.strip(), "one two* Inbox") << "what has the focus is marked before it moves for the first time";
    EXPECT_EQ(desktop.toolkit().appearance(), ui::Appearance::Dark);
}

TEST(Bar, QuitsFromItsMenuAndLeavesNothingRunning) {
    BarDesktop desktop;
    desktop.open("Editor", {"one"});
    desktop.startMorvel();
    desktop.rightClick(desktop.bar());
    EXPECT_EQ(desktop.toolkit().menuTitles(), (std::vector<std::string>{"Morvel Settings…", "-", "Quit Morvel"}));
    desktop.choose({"Quit Morvel"});
    EXPECT_EQ(desktop.terminations(), 1);
    desktop.quitMorvel();
    desktop.run(20s);
    EXPECT_TRUE(desktop.toolkit().panels().empty());
    EXPECT_EQ(desktop.mainLoop().armedTimers(), 0u);
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
    desktop.click(desktop.group("Editor"));
    ASSERT_NE(desktop.toolkit().shownPopover(), nullptr);
    desktop.settings().barHeight.set(40);
    desktop.settle();
    EXPECT_EQ(desktop.toolkit().shownPopover(), nullptr);
    EXPECT_EQ(desktop.strip(), "Editorx2");
}

}  // namespace
}  // namespace morvel
