// The Start button on the bars of a whole desktop.
#include "App/BarDesktop.h"
#include "Launcher/LauncherRow.h"
#include "Launcher/StartButton.h"

namespace morvel {
namespace {

class LauncherDesktop : public BarDesktop {
public:
    using BarDesktop::BarDesktop;
    std::vector<std::string> systemButtons() {
        std::vector<std::string> tooltips;
        for (const StartButton* button : all<StartButton>(bar())) tooltips.push_back(button->tooltip());
        return tooltips;
    }
    StartButton& startButton(size_t screen = 0) { return *all<StartButton>(bar(screen)).at(0); }
    std::string rows() {
        std::string text;
        for (LauncherRow* row : all<LauncherRow>(toolkit().shownPopover()->surface.root()))
            if (!row->isHidden()) text += (text.empty() ? "" : ", ") + row->nameLabel().text();
        return text;
    }
    bool isLauncherOpen() { return toolkit().shownPopover() != nullptr; }
};

using Buttons = std::vector<std::string>;

TEST(LauncherScenario, SettingsShowTheSystemButtonsAtOnceAndTakeTheirRoom) {
    LauncherDesktop desktop;
    desktop.launch("Editor").open({.title = "Window"});
    desktop.startMorvel();
    EXPECT_EQ(desktop.systemButtons(), Buttons{"Apps"});
    const double before = desktop.button("Window").boundsInRoot().x;
    desktop.settings().showAppleMenuButton.set(true);
    desktop.settle();
    EXPECT_EQ(desktop.systemButtons(), (Buttons{"Apps", "Apple menu"}));
    EXPECT_GT(desktop.button("Window").boundsInRoot().x, before);
    desktop.click(*desktop.all<StartButton>(desktop.bar()).at(1));  // nothing is behind it here
    EXPECT_FALSE(desktop.isLauncherOpen());

    desktop.click(desktop.startButton());
    EXPECT_TRUE(desktop.isLauncherOpen());
    desktop.settings().showStartButton.set(false);
    desktop.settle();
    EXPECT_EQ(desktop.systemButtons(), Buttons{"Apple menu"});
    EXPECT_FALSE(desktop.isLauncherOpen()) << "it hangs at nothing";
}

TEST(LauncherScenario, OpensWithThePressListsWhatIsInstalledAndStartsIt) {
    LauncherDesktop desktop;
    desktop.installedApplications().install("com.example.editor", "Editor");
    desktop.installedApplications().install("com.example.mail", "Mail");
    desktop.startMorvel();
    desktop.toolkit().press(desktop.startButton());
    EXPECT_TRUE(desktop.isLauncherOpen()) << "not only with the release";
    desktop.toolkit().release();
    desktop.settle();
    EXPECT_EQ(desktop.rows(), "Editor, Mail");
    desktop.click(desktop.startButton());
    EXPECT_FALSE(desktop.isLauncherOpen()) << "a second click puts it away";

    desktop.click(desktop.startButton());
    desktop.toolkit().type("mai");
    desktop.toolkit().give(ui::TextCommand::Confirm);
    EXPECT_FALSE(desktop.isLauncherOpen());
    EXPECT_EQ(desktop.journal().texts().back(), "openApplication /Applications/Mail.app activates");

    // Gone from the disk since it was listed: it simply does not open.
    desktop.click(desktop.startButton());
    desktop.settle();
    EXPECT_EQ(desktop.rows(), "Editor, Mail") << "nothing typed survives";
    desktop.installedApplications().bundles.clear();
    desktop.toolkit().click(*desktop.all<LauncherRow>(desktop.toolkit().shownPopover()->surface.root()).at(0));
    desktop.settle();
    EXPECT_FALSE(desktop.isLauncherOpen());
}

TEST(LauncherScenario, ClosesAtAPressOnTheBarAndWithItsDisplay) {
    LauncherDesktop desktop(sim::twoDisplays());
    desktop.launch("Editor").open({.title = "Window"});
    desktop.startMorvel();
    desktop.click(desktop.startButton());
    desktop.click(desktop.button("Window"));
    EXPECT_FALSE(desktop.isLauncherOpen());
    desktop.click(desktop.startButton(1));
    desktop.unplug(desktop.screens().screens().at(1).displayID.value());
    desktop.run(5s);
    EXPECT_FALSE(desktop.isLauncherOpen());
    desktop.click(desktop.startButton());
    desktop.quitMorvel();
}

}  // namespace
}  // namespace morvel
