// What a person sees of the buttons for windows and applications, and what presses on them and their menus lead to.
#include "App/BarDesktop.h"

namespace morvel {
namespace {

using Texts = std::vector<std::string>;
using Frame = Rect<ViewSpace>;

class ButtonDesktop : public BarDesktop {
public:
    using BarDesktop::BarDesktop;

    /// Starts with all windows in groups.
    void startGrouped() {
        defaults().set("groupingMode", {std::string("always")});
        startMorvel();
    }
    std::vector<GroupRowButton*> rows() { return listed<GroupRowButton>(); }
    void clickCross(size_t row) { click(const_cast<ui::ImageButton&>(rows().at(row)->closeButton())); }
    double listHeight() {
        settle();
        return toolkit().shownPopover()->size.height;
    }
    void chooseFrom(ui::View& button, const std::string& title) {
        rightClick(button);
        choose({title});
    }
    /// What applications were asked to do since the last call.
    Texts asked() {
        Texts texts;
        for (const sim::Deed& deed : journal().deeds())
            if (deed.what.ends_with("erminate")) texts.push_back(deed.what);
        journal().clear();
        return texts;
    }
};

TEST(WindowButton, PlacesItsPartsAndAnswersThePointer) {
    ButtonDesktop desktop;
    desktop.defaults().set("activeButtonStyle", {std::string("underline")});
    desktop.launch("Editor").open({.title = "Inbox"}).focus();
    desktop.launch("Idle");
    desktop.startMorvel();
    WindowButton* button = &desktop.button("Inbox");
    const auto part = [&](size_t i) -> const ui::View& { return *button->subviews().at(i); };
    enum { Icon, Title, Underline, Badge };
    EXPECT_EQ(button->frame().size(), (Size{150, 32}));
    EXPECT_EQ(part(Icon).frame(), (Frame{6, 7, 18, 18}));
    EXPECT_EQ(part(Title).frame(), (Frame{30, 8.5, 150 - 30 - 8, 15}));
    EXPECT_EQ(part(Underline).frame(), (Frame{0, 30, 150, 2})) << "towards the screen edge";
    EXPECT_EQ(part(Badge).frame(), (Frame{14, 15, 12, 12}));
    EXPECT_TRUE(part(Badge).isHidden());
    const ui::Color atRest = button->background();
    desktop.toolkit().moveTo(*button);
    EXPECT_NE(button->background(), atRest);
    desktop.toolkit().leave();
    EXPECT_EQ(button->background(), atRest);

    for (WindowButton* each : desktop.all<WindowButton>(desktop.bar())) each->setIconOnly(true);
    desktop.settle();
    EXPECT_EQ(button->frame().width, 36);
    EXPECT_EQ(part(Icon).frame(), (Frame{9, 7, 18, 18}));
    EXPECT_TRUE(part(Title).isHidden());
    button->setIconOnly(false);
    desktop.settle();
    EXPECT_FALSE(part(Title).isHidden());
    EXPECT_EQ(part(Title).frame().width, 112);

    desktop.settings().compactAtTop.set(false);
    desktop.settings().barEdge.set(MorvelEdge::Top);
    button = &desktop.button("Inbox");
    EXPECT_EQ(part(Underline).frame(), (Frame{0, 0, 150, 2}));
    button->setActive(false);
    EXPECT_TRUE(part(Underline).isHidden());
}

TEST(WindowButton, AFreeWidthFollowsTheTitleWithinItsBounds) {
    ButtonDesktop desktop;
    desktop.defaults().set("windowButtonWidthMode", {std::string("free")});
    auto& window = desktop.launch("Editor").open({.title = "i"});
    desktop.launch("Other").open({.title = "other"});
    desktop.startMorvel();
    const auto widthWith = [&](const std::string& title) {
        window.setTitle(title);
        desktop.run(1s);
        return desktop.button(title).frame().width;
    };
    EXPECT_EQ(widthWith("i"), 80);
    EXPECT_EQ(widthWith("a longer title"), 14 * sim::SimToolkit::kCharacterWidth + 38);
    EXPECT_EQ(widthWith(std::string(100, 'x')), 220);
    const int moves = sim::SimToolkit::repaints(desktop.button("other")).frame;
    EXPECT_EQ(widthWith(std::string(101, 'x')), 220);
    EXPECT_EQ(sim::SimToolkit::repaints(desktop.button("other")).frame, moves) << "the bar stays as it is";
}

TEST(WindowButton, ItsMenuOutlivesIt) {
    ButtonDesktop desktop(sim::twoDisplays());
    auto& mail = desktop.launch("Mail");
    auto &moved = mail.open({.title = "moved"}), &closed = mail.open({.title = "closed"});
    desktop.startMorvel();
    const struct {
        std::string button;
        Texts path;
        std::function<bool()> isDone;
    } rows[] = {
        {"moved", {"Move to Display", "Second Display"}, [&] { return moved.frame().x > 1440; }},
        {"closed",
         {"Pin App to Morvel"},
         [&] { return desktop.delegate().pinnedStore()->isPinnedApp("com.example.mail"); }},
        {"closed", {"Close Window"}, [&] { return !closed.isOpen(); }},
        {"moved", {"Quit Mail"}, [&] { return !mail.isRunning(); }},
    };
    for (const auto& row : rows) {
        desktop.rightClick(desktop.button(row.button, row.button == "moved" && moved.frame().x > 1440 ? 1 : 0));
        desktop.settings().barHeight.set(desktop.settings().barHeight.value() + 1);  // the bars are made anew
        desktop.settle();
        desktop.choose(row.path);
        desktop.run(1s);
        EXPECT_TRUE(row.isDone()) << row.path.back();
    }
}

TEST(WindowButton, MayGoWithinItsOwnClick) {
    sim::Desktop desktop;
    IconCache cache(desktop.icons(), desktop.mainLoop());
    std::unique_ptr<WindowButton> button;
    std::string done;
    WindowButtonBindings bindings;
    bindings.onClick = [&, after = std::string("it is gone")] {
        button.reset();
        done = after;
    };
    bindings.widthProvider = [] { return 150; };
    bindings.bordersProvider = [] { return false; };
    bindings.activeStyleProvider = [] { return ActiveButtonStyle::Pill; };
    bindings.accentProvider = [] { return ui::kControlAccentColor; };
    bindings.barEdgeProvider = [] { return MorvelEdge::Bottom; };
    button = std::make_unique<WindowButton>(ButtonServices{desktop.toolkit(), desktop.icons(), cache}, WindowSnapshot(),
                                            false, bindings);
    button->accessibilityPress();
    EXPECT_EQ(done, "it is gone");
}

TEST(Quitting, IsPoliteForATimeAndNeverEndsTheWrongOne) {
    ButtonDesktop desktop;
    const auto launchStubborn = [&]() -> sim::SimApp& {
        auto& app = desktop.launch("Mail");
        app.ignoresQuit = true;
        desktop.settle();
        return app;
    };
    desktop.startMorvel();
    launchStubborn();
    desktop.chooseFrom(desktop.button("Mail"), "Show in Finder");
    EXPECT_EQ(desktop.journal().texts().back(), "reveal /Applications/Mail.app");
    desktop.chooseFrom(desktop.button("Mail"), "Force Quit Mail");
    EXPECT_EQ(desktop.asked(), Texts{"forceTerminate"});

    launchStubborn();
    desktop.chooseFrom(desktop.button("Mail"), "Quit Mail");
    desktop.run(1500ms);
    desktop.chooseFrom(desktop.button("Mail"), "Quit Mail");
    desktop.run(999ms);
    EXPECT_EQ(desktop.asked(), (Texts{"terminate", "terminate"}));
    desktop.run(1ms);
    EXPECT_EQ(desktop.asked(), Texts{"forceTerminate"}) << "asking again does not postpone the end";
    desktop.run(10s);
    EXPECT_EQ(desktop.asked(), Texts{}) << "once is enough";

    auto& third = launchStubborn();
    desktop.chooseFrom(desktop.button("Mail"), "Quit Mail");
    desktop.run(1s);
    third.quit();
    desktop.run(1s);
    desktop.launch("Another", {.pid = third.pid()});
    desktop.run(5s);
    EXPECT_EQ(desktop.asked(), Texts{"terminate"}) << "another process got the number";

    auto& bare = desktop.launch("Bare", {.hasBundle = false});
    desktop.journal().clear();
    desktop.chooseFrom(desktop.button("Bare"), "Show in Finder");
    EXPECT_EQ(desktop.journal().texts(), Texts{}) << "it cannot be found";
    desktop.rightClick(desktop.button("Bare"));
    bare.killSilently();
    desktop.choose({"Quit Bare"});
    EXPECT_EQ(desktop.asked(), Texts{}) << "there is nobody to ask";
}

TEST(GroupedAppButton, CountsItsWindowsInABadgeThatStaysInside) {
    ButtonDesktop desktop;
    auto& mail = desktop.launch("Mail");
    mail.open();
    desktop.startGrouped();
    EXPECT_TRUE(desktop.group("Mail").countBadge().isHidden());
    double former = 0;
    for (const size_t count : {2, 12, 100}) {
        while (mail.windows().size() < count) mail.open();
        const CountBadge& badge = desktop.group("Mail").countBadge();
        EXPECT_FALSE(badge.isHidden());
        const Frame& frame = badge.frame();
        EXPECT_GE(frame.minX(), 0) << count;
        EXPECT_LE(frame.maxX(), 40) << count;
        EXPECT_LE(frame.maxY(), 32) << count;
        EXPECT_GE(frame.width, frame.height) << "a pill lies flat";
        EXPECT_GE(frame.width, former) << "no number is cut";
        EXPECT_GT(frame.width, desktop.toolkit().textSize(badge.text(), {}).width);
        former = frame.width;
    }
}

TEST(GroupedAppButton, OpensOnPressAndQuitsTheProcessThatRuns) {
    ButtonDesktop desktop;
    auto& first = desktop.launch("Mail");
    first.open({.title = "a"});
    auto& second = desktop.launch("Mail");
    second.open({.title = "b"});
    desktop.startGrouped();
    desktop.toolkit().press(desktop.group("Mail"));
    EXPECT_EQ(desktop.rows().size(), 2u) << "on press, not on release";
    desktop.toolkit().release();
    desktop.toolkit().pressOutside();
    first.killSilently();  // the bar does not know yet
    desktop.chooseFrom(desktop.group("Mail"), "Pin App to Morvel");
    second.ignoresQuit = true;
    desktop.chooseFrom(desktop.group("Mail"), "Quit Mail");
    EXPECT_EQ(desktop.asked(), Texts{"terminate"});
    desktop.chooseFrom(desktop.group("Mail"), "Force Quit Mail");
    EXPECT_FALSE(second.isRunning());
    EXPECT_TRUE(desktop.delegate().pinnedStore()->isPinnedApp("com.example.mail"));
}

TEST(GroupPopover, ListsTheWindowsAndFollowsThem) {
    ButtonDesktop desktop;
    auto& mail = desktop.launch("Mail");
    std::vector<sim::SimWindow*> windows;
    for (const char* title : {"a", "b", "c", "d"}) windows.push_back(&mail.open({.title = title}));
    desktop.startGrouped();
    desktop.click(desktop.group("Mail"));
    ASSERT_EQ(desktop.rows().size(), 4u);
    const GroupRowButton& last = *desktop.rows()[3];
    EXPECT_EQ(last.frame(), (Frame{0, 108, 280, 36}));
    EXPECT_EQ(last.titleLabel().frame(), (Frame{34, 10.5, 280 - 34 - 32, 15}));
    EXPECT_EQ(last.closeButton().frame(), (Frame{256, 10, 16, 16}));
    windows[3]->setTitle("renamed");
    mail.open({.title = "new"});
    desktop.run(1s);
    EXPECT_EQ(last.titleLabel().text(), "renamed");
    EXPECT_EQ(desktop.rows().size(), 4u) << "a new window waits for the next opening";

    windows[1]->asksBeforeClosing = true;
    desktop.clickCross(1);
    EXPECT_TRUE(windows[1]->isOpen());
    EXPECT_EQ(desktop.listHeight(), 3 * 36) << "at once, though the window may still be closing";
    windows[0]->close();
    EXPECT_EQ(desktop.listHeight(), 2 * 36);
    desktop.clickCross(1);
    desktop.clickCross(0);
    EXPECT_EQ(desktop.toolkit().shownPopover(), nullptr) << "closed with its last row";
    EXPECT_FALSE(windows[2]->isOpen() || windows[3]->isOpen());
}

TEST(GroupPopover, ARowsMenuActsAndOutlivesTheList) {
    ButtonDesktop desktop(sim::twoDisplays());
    auto& mail = desktop.launch("Mail");
    for (const char* title : {"a", "b", "c", "d"}) mail.open({.title = title});
    auto& bare = desktop.launch("Bare", {.hasBundle = false});
    for (const char* title : {"x", "y"}) bare.open({.title = title});
    desktop.startGrouped();
    const struct {
        Texts path;
        bool closesList;
        std::function<bool()> isDone;
    } rows[] = {
        {{"Close Window"}, false, [&] { return !mail.windows()[0]->isOpen(); }},
        {{"Pin App to Morvel"},
         true,
         [&] { return desktop.delegate().pinnedStore()->isPinnedApp("com.example.mail"); }},
        {{"Move to Display", "Second Display"}, true, [&] { return mail.windows()[1]->frame().x > 1440; }},
        {{"Quit Mail"}, true, [&] { return !mail.isRunning(); }},
    };
    for (const auto& row : rows) {
        desktop.click(desktop.group("Mail"));
        desktop.rightClick(*desktop.rows().at(0));
        desktop.choose(row.path);
        EXPECT_EQ(desktop.toolkit().shownPopover() == nullptr, row.closesList) << row.path.back();
        EXPECT_TRUE(row.isDone()) << row.path.back();
        desktop.toolkit().pressOutside();
    }
    desktop.click(desktop.group("Bare"));
    desktop.rightClick(*desktop.rows().at(0));
    EXPECT_FALSE(desktop.toolkit().canChoose("Pin App to Morvel")) << "it could not be found again";
    desktop.settings().barHeight.set(50);  // the bar, and its list with it, is made anew while the menu is open
    desktop.settle();
    desktop.choose({"Move to Display", "Second Display"});
    EXPECT_GT(bare.windows()[0]->frame().x, 1440);
}

}  // namespace
}  // namespace morvel
