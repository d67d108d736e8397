// The launcher on the bars of a whole desktop: what it lists, what typing and clicking do, and what it costs.
#include "App/BarDesktop.h"
#include "Launcher/LauncherRow.h"
#include "Launcher/LauncherView.h"
#include "Launcher/StartButton.h"

namespace morvel {
namespace {

using Names = std::vector<std::string>;
using ui::TextCommand;

class LauncherDesktop : public BarDesktop {
public:
    explicit LauncherDesktop(const std::vector<sim::DisplaySpec>& displays = sim::oneDisplay(1440, 900))
        : BarDesktop(displays) {
        for (const char* name : {"App Store", "Mail", "Safari", "TextEdit"}) install(name);
    }
    void install(const std::string& name) { installedApplications().install("com.apple." + name, name); }

    Names systemButtons() {
        Names tooltips;
        for (const StartButton* button : all<StartButton>(bar())) tooltips.push_back(button->tooltip());
        return tooltips;
    }
    StartButton& startButton(size_t screen = 0) { return *all<StartButton>(bar(screen)).at(0); }
    void openLauncher(size_t screen = 0) { click(startButton(screen)); }
    bool isLauncherOpen() { return !listed<LauncherView>().empty(); }
    LauncherView& launcher() { return *listed<LauncherView>().at(0); }
    Names entries() {
        Names names;
        for (const InstalledApp* app : launcher().filtered()) names.push_back(app->displayName);
        return names;
    }
    std::string selected() {
        const auto place = launcher().list().selected();
        return place ? launcher().filtered().at(*place)->displayName : "none";
    }
    /// The rows that can be seen, in no order.
    std::vector<LauncherRow*> rows() {
        std::vector<LauncherRow*> shown = listed<LauncherRow>();
        std::erase_if(shown, [](const LauncherRow* row) { return row->isHidden(); });
        return shown;
    }
    LauncherRow& row(const std::string& name) {
        for (LauncherRow* row : rows())
            if (row->nameLabel().text() == name) return *row;
        throw std::runtime_error("no row " + name);
    }
    void type(const std::string& text) {
        toolkit().erase();
        toolkit().type(text);
    }
    bool give(TextCommand command) { return toolkit().give(command); }
    /// The applications that were opened since the last call.
    Names opened() {
        Names paths;
        for (const std::string& deed : journal().texts())
            if (deed.starts_with("openApplication ")) paths.push_back(deed.substr(16));
        journal().clear();
        return paths;
    }
};

TEST(Launcher, SettingsShowTheSystemButtonsAtOnceAndTakeTheirRoom) {
    LauncherDesktop desktop;
    desktop.open("Editor", {"Window"});
    desktop.startMorvel();
    EXPECT_EQ(desktop.systemButtons(), Names{"Apps"});
    const double before = desktop.button("Window").boundsInRoot().x;
    desktop.settings().showAppleMenuButton.set(true);
    EXPECT_EQ(desktop.systemButtons(), (Names{"Apps", "Apple menu"}));
    EXPECT_GT(desktop.button("Window").boundsInRoot().x, before);
    desktop.click(*desktop.all<StartButton>(desktop.bar()).at(1));  // nothing is behind it here
    EXPECT_FALSE(desktop.isLauncherOpen());

    desktop.openLauncher();
    EXPECT_TRUE(desktop.isLauncherOpen());
    desktop.settings().showStartButton.set(false);
    EXPECT_EQ(desktop.systemButtons(), Names{"Apple menu"});
    EXPECT_FALSE(desktop.isLauncherOpen()) << "it hangs at nothing";
}

TEST(Launcher, ComesAndGoesByItsButtonTheBarAndTheDisplay) {
    LauncherDesktop desktop(sim::twoDisplays());
    desktop.open("Editor", {"Window"});
    desktop.startMorvel();
    desktop.toolkit().press(desktop.startButton());
    EXPECT_TRUE(desktop.isLauncherOpen()) << "not only with the release";
    desktop.toolkit().release();
    EXPECT_EQ(desktop.toolkit().shownPopover()->edge, ui::Edge::Top);
    EXPECT_EQ(desktop.toolkit().shownPopover()->size, (Size{320, 400}));
    desktop.type("Saf");
    desktop.openLauncher();
    EXPECT_FALSE(desktop.isLauncherOpen()) << "a second click puts it away";
    desktop.openLauncher();
    EXPECT_EQ(desktop.launcher().query(), "") << "nothing typed survives";
    desktop.toolkit().pressOutside();
    EXPECT_FALSE(desktop.isLauncherOpen());
    desktop.openLauncher();
    desktop.click(desktop.button("Window"));
    EXPECT_FALSE(desktop.isLauncherOpen());
    desktop.openLauncher(1);
    desktop.unplug(DisplayID{2});
    desktop.run(5s);
    EXPECT_FALSE(desktop.isLauncherOpen());
    desktop.settings().compactAtTop.set(false);
    desktop.settings().barEdge.set(MorvelEdge::Top);
    desktop.openLauncher();
    EXPECT_EQ(desktop.toolkit().shownPopover()->edge, ui::Edge::Bottom);
    desktop.quitMorvel();
}

TEST(Launcher, ListsEverythingAndThenWhatIsTyped) {
    LauncherDesktop desktop;
    desktop.startMorvel();
    desktop.openLauncher();
    EXPECT_EQ(desktop.entries(), (Names{"App Store", "Mail", "Safari", "TextEdit"}));
    EXPECT_EQ(desktop.selected(), "none");
    desktop.type("SAF");
    EXPECT_EQ(desktop.entries(), Names{"Safari"});
    EXPECT_EQ(desktop.selected(), "Safari");
    desktop.type(" ");
    EXPECT_EQ(desktop.entries(), Names{"App Store"}) << "a space finds names with a space";
    desktop.type("com.apple");
    EXPECT_EQ(desktop.entries(), Names{}) << "identifiers are not searched";
    EXPECT_TRUE(desktop.rows().empty());
    EXPECT_TRUE(desktop.give(TextCommand::Confirm)) << "there is nothing to open";
    EXPECT_TRUE(desktop.give(TextCommand::MoveDown));
    EXPECT_TRUE(desktop.isLauncherOpen());
}

TEST(Launcher, TheKeyboardSelectsAndOpens) {
    LauncherDesktop desktop;
    desktop.startMorvel();
    desktop.openLauncher();
    EXPECT_TRUE(desktop.give(TextCommand::Confirm));
    EXPECT_EQ(desktop.opened(), Names{}) << "nothing was chosen yet";
    const std::pair<TextCommand, const char*> moves[] = {{TextCommand::MoveDown, "App Store"},
                                                         {TextCommand::MoveUp, "App Store"},
                                                         {TextCommand::PageDown, "TextEdit"},
                                                         {TextCommand::MoveDown, "TextEdit"}};
    for (const auto& [command, reached] : moves) {
        desktop.give(command);
        EXPECT_EQ(desktop.selected(), reached);
    }
    desktop.type("a");
    desktop.give(TextCommand::MoveDown);
    EXPECT_EQ(desktop.selected(), "Mail") << "after App Store, which begins so";
    EXPECT_TRUE(desktop.give(TextCommand::Confirm));
    EXPECT_EQ(desktop.opened(), Names{"/Applications/Mail.app activates"});
    EXPECT_FALSE(desktop.isLauncherOpen());
    desktop.openLauncher();
    EXPECT_TRUE(desktop.give(TextCommand::Cancel));
    EXPECT_FALSE(desktop.isLauncherOpen());
}

TEST(Launcher, AClickOpensWhatIsStillThere) {
    LauncherDesktop desktop;
    desktop.startMorvel();
    desktop.openLauncher();
    desktop.toolkit().press(desktop.row("Mail"));
    desktop.toolkit().drag({-50, -50});
    desktop.toolkit().release();
    EXPECT_EQ(desktop.opened(), Names{}) << "released elsewhere";
    desktop.click(desktop.row("Mail"));
    EXPECT_EQ(desktop.opened(), Names{"/Applications/Mail.app activates"});
    EXPECT_FALSE(desktop.isLauncherOpen());

    desktop.openLauncher();
    desktop.installedApplications().bundles.clear();
    desktop.click(desktop.row("Mail"));
    EXPECT_FALSE(desktop.isLauncherOpen()) << "gone from the disk: it simply does not open";
    desktop.openLauncher();
    desktop.workspace().onOpenApplication = [&](const std::string&, const OpenApplication&) {
        desktop.settings().barHeight.set(50);
        desktop.settle();  // the bar and its launcher go within the click
    };
    desktop.click(desktop.row("Safari"));
    EXPECT_FALSE(desktop.isLauncherOpen());
}

TEST(Launcher, AListThatIsReadSlowlyComesWhereItIsStillWanted) {
    LauncherDesktop desktop;
    desktop.startMorvel();
    desktop.workQueues().hold();
    desktop.openLauncher();
    desktop.type("saf");
    EXPECT_EQ(desktop.entries(), Names{});
    desktop.workQueues().letGo();
    EXPECT_EQ(desktop.entries(), Names{"Safari"}) << "what was typed meanwhile counts";
    desktop.workQueues().hold();
    desktop.install("Atlas");
    desktop.openLauncher();
    desktop.openLauncher();  // is closed
    desktop.openLauncher();
    desktop.settings().barHeight.set(50);  // goes with its bar
    desktop.settle();
    desktop.workQueues().letGo();
    desktop.settle();  // the answers touch nothing that is gone
    desktop.openLauncher();
    EXPECT_EQ(desktop.entries().size(), 5u);
}

TEST(Launcher, AThousandApplicationsCostWhatCanBeSeen) {
    LauncherDesktop desktop;
    for (int i = 0; i < 1000; ++i) desktop.install("Tool " + std::to_string(1000 + i));
    desktop.startMorvel();
    desktop.openLauncher();
    LauncherList& list = desktop.launcher().list();
    const size_t made = list.subviews().size();
    EXPECT_LE(made, 14u) << "more rows than can be seen";
    const auto isFile = [](const auto& load) { return load.first.starts_with("file:"); };
    EXPECT_LE(std::ranges::count_if(desktop.icons().loads, isFile), 14);
    for (int i = 0; i < 100; ++i) desktop.toolkit().turnWheel(list, 1);
    desktop.settle();
    EXPECT_LE(list.subviews().size(), made + 1) << "one more where two are cut";
    for (const LauncherRow* row : desktop.rows()) {
        const std::string& name = row->nameLabel().text();
        EXPECT_EQ(sim::imageName(row->iconView().image()), "baked:file:/Applications/" + name + ".app") << name;
    }
    desktop.give(TextCommand::PageDown);
    EXPECT_EQ(desktop.selected(), "App Store");
    EXPECT_EQ(desktop.launcher().scrollView().offset(), 0) << "what is selected is shown";
    desktop.type("tool 1999");
    EXPECT_EQ(desktop.rows().size(), 1u);
    EXPECT_EQ(desktop.row("Tool 1999").state(), RowState::Selected);
}

}  // namespace
}  // namespace morvel
