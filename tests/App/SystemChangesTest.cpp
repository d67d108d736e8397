// The Dock and the Spaces settings are changed with consent, undone at the end, and never left behind unnoticed.
#include "App/BarDesktop.h"

namespace morvel {
namespace {

constexpr const char* kHideDock = "Auto-hide & shrink Dock";
constexpr const char* kDontAskAgain = "Don't ask again";

class DockDesktop : public BarDesktop {
public:
    /// What was done to the system since the last call: "+dock", "-spaces" and so on.
    std::string done() {
        std::string text;
        for (const std::string& line : std::exchange(shell.lines, {})) {
            EXPECT_TRUE(line.ends_with("; killall Dock")) << line;
            const bool isDock = line.find(" autohide ") != std::string::npos;
            const bool isApplied = line.find("defaults delete") == std::string::npos;
            text += std::string(text.empty() ? "" : " ") + (isApplied ? "+" : "-") + (isDock ? "dock" : "spaces");
        }
        return text;
    }
    std::string question() { return toolkit().alert() ? toolkit().alert()->message : ""; }

    sim::SimShell& shell = addDock();
};

TEST(SystemChanges, AreOfferedMadeUndoneAndMadeAgain) {
    DockDesktop desktop;
    desktop.startMorvel();
    EXPECT_EQ(desktop.question(), "Hide and shrink the macOS Dock?");
    desktop.toolkit().answer("Skip");
    EXPECT_EQ(desktop.question(), "Disable macOS automatic Space switching?");
    desktop.toolkit().answer("");  // it went away with nothing chosen
    desktop.quitMorvel();
    EXPECT_EQ(desktop.done(), "") << "what was not changed is not undone";

    desktop.startMorvel();
    desktop.toolkit().answer(kHideDock);
    EXPECT_EQ(desktop.shell.lines.at(0),
              "defaults write com.apple.dock autohide -bool true; "
              "defaults write com.apple.dock autohide-delay -float 1000; "
              "defaults write com.apple.dock autohide-time-modifier -float 0; "
              "defaults write com.apple.dock tilesize -int 1; defaults write com.apple.dock largesize -int 1; "
              "defaults write com.apple.dock magnification -bool false; "
              "defaults write com.apple.dock show-recents -bool false; killall Dock");
    EXPECT_EQ(desktop.done(), "+dock") << "once";
    desktop.toolkit().answer(kDontAskAgain);
    desktop.quitMorvel();
    EXPECT_EQ(desktop.done(), "-dock");

    desktop.startMorvel();
    EXPECT_EQ(desktop.question(), "");
    EXPECT_EQ(desktop.done(), "+dock") << "without asking";
    desktop.settings().spacesPrefsChangedByUs.set(true);
    EXPECT_EQ(desktop.done(), "+spaces");
    desktop.settings().dockChangedByUs.set(false);
    EXPECT_EQ(desktop.done(), "-dock");
    desktop.quitMorvel();
    EXPECT_EQ(desktop.done(), "-spaces");
    desktop.startMorvel();
    desktop.settings().dockChangedByUs.set(true);
    desktop.done();
    desktop.quitMorvel();
    EXPECT_EQ(desktop.done(), "-dock -spaces");
}

TEST(SystemChanges, FollowTheValueOfTheirFlagAndNotItsAssignments) {
    DockDesktop desktop;
    desktop.startMorvel();
    desktop.toolkit().answer("Skip");
    desktop.toolkit().answer(kDontAskAgain);
    for (const bool isWanted : {false, true, true}) desktop.settings().dockChangedByUs.set(isWanted);
    EXPECT_EQ(desktop.done(), "+dock");
    desktop.quitMorvel();
    EXPECT_EQ(desktop.done(), "-dock");
    desktop.startMorvel();
    EXPECT_EQ(desktop.question(), "Hide and shrink the macOS Dock?") << "it was passed over";
    EXPECT_EQ(desktop.done(), "");
    desktop.toolkit().answer(kHideDock);
    EXPECT_EQ(desktop.done(), "+dock") << "though the flag is set already";
}

TEST(SystemChanges, LeftBehindByACrashAreOfferedToBeUndone) {
    DockDesktop desktop;
    desktop.startMorvel();
    desktop.toolkit().answer(kHideDock);
    desktop.toolkit().answer("Disable both");
    EXPECT_EQ(desktop.done(), "+dock +spaces");
    desktop.crashMorvel();
    desktop.startMorvel();
    EXPECT_EQ(desktop.question(), "Keep the changed Dock settings?");
    desktop.toolkit().answer("Keep");
    EXPECT_EQ(desktop.done(), "+dock +spaces");
    desktop.crashMorvel();
    desktop.startMorvel();
    desktop.toolkit().answer("Restore");
    EXPECT_EQ(desktop.done(), "-dock -spaces");
    desktop.crashMorvel();
    desktop.startMorvel();
    EXPECT_EQ(desktop.question(), "") << "nothing is changed any more";
    EXPECT_EQ(desktop.done(), "");
}

TEST(SystemChanges, LeftHalfMadeByACrashAreOfferedToBeUndone) {
    DockDesktop desktop;
    DefaultsDictionary stored;  // as the crash leaves it
    const auto crash = [&] {
        desktop.crashMorvel();
        desktop.toolkit().answer("");  // the question that stands there goes with it
        desktop.defaults().values = stored;
        desktop.startMorvel();
        EXPECT_EQ(desktop.question(), "Keep the changed Dock settings?");
    };
    desktop.shell.onRun = [&] { stored = desktop.defaults().values; };
    desktop.startMorvel();
    desktop.toolkit().answer(kHideDock);
    crash();
    desktop.toolkit().answer("Keep");
    EXPECT_EQ(desktop.question(), "Disable macOS automatic Space switching?") << "the first is agreed to";
    desktop.settings().dockChangedByUs.set(false);
    crash();
    desktop.toolkit().answer("Restore");
    EXPECT_EQ(desktop.done(), "+dock +dock -dock -dock");
    EXPECT_FALSE(desktop.defaults().values.contains("systemChangesInForce"));
}

TEST(SystemChanges, AFailureIsLoggedAndNothingElse) {
    DockDesktop desktop;
    desktop.shell.result = {1, "no such domain"};
    desktop.startMorvel();
    desktop.toolkit().answer(kHideDock);
    desktop.toolkit().answer("Skip");
    ASSERT_EQ(desktop.log().errors.size(), 1u);
    EXPECT_NE(desktop.log().errors[0].find("status 1: no such domain"), std::string::npos);
    EXPECT_TRUE(desktop.settings().firstRunCompleted.value());
}

TEST(SystemChanges, AnAnswerAfterTheProgramsEndChangesNothing) {
    DockDesktop desktop;
    desktop.startMorvel();
    desktop.quitMorvel();
    const int writes = desktop.defaults().writes;
    desktop.toolkit().answer(kHideDock);
    EXPECT_EQ(desktop.defaults().writes, writes);
    EXPECT_EQ(desktop.done(), "");
}

TEST(StatusItem, IsThereBeforeThePermissionAndFollowsItsSetting) {
    DockDesktop desktop;
    desktop.defaults().values["showMenuBarIcon"] = {true};
    desktop.accessibility().trusted = false;
    desktop.startMorvel();
    ASSERT_NE(desktop.toolkit().statusMenu(), nullptr);
    const ui::Menu& menu = *desktop.toolkit().statusMenu();
    ASSERT_EQ(menu.size(), 3u);
    EXPECT_EQ(menu[0].title + "|" + menu[2].title, "Morvel Settings…|Quit Morvel");
    menu[2].action();
    EXPECT_EQ(desktop.terminations(), 1);
    desktop.accessibility().trusted = true;
    desktop.run(2s);
    desktop.toolkit().answer(kHideDock);
    EXPECT_EQ(desktop.toolkit().statusMenusSet, 1);
    desktop.toolkit().answer("Skip");
    desktop.settings().showMenuBarIcon.set(false);
    EXPECT_EQ(desktop.toolkit().statusMenu(), nullptr);
    desktop.settings().showMenuBarIcon.set(true);
    EXPECT_NE(desktop.toolkit().statusMenu(), nullptr);
}

TEST(Permission, IsWaitedForWithOrWithoutItsWindow) {
    BarDesktop desktop;
    desktop.defaults().values["showMenuBarIcon"] = {true};
    desktop.accessibility().trusted = false;
    desktop.startMorvel();
    ASSERT_TRUE(desktop.toolkit().prompt());
    EXPECT_EQ(desktop.toolkit().prompt()->title, "Morvel — Accessibility Required");
    EXPECT_EQ(desktop.accessibility().prompts, 1);
    desktop.toolkit().prompt()->pressed();
    EXPECT_EQ(desktop.journal().texts().back(), "openPermissionSettings");

    desktop.toolkit().closePrompt();  // by hand
    desktop.run(10s);
    EXPECT_EQ(desktop.toolkit().prompt(), nullptr);
    desktop.toolkit().statusMenu()->front().action();
    EXPECT_TRUE(desktop.toolkit().prompt()) << "there are no settings yet, but something to be done";
    EXPECT_TRUE(desktop.toolkit().formWindows().empty());
    desktop.toolkit().closePrompt();
    desktop.accessibility().trusted = true;
    desktop.run(999ms);
    EXPECT_TRUE(desktop.toolkit().panels().empty());
    desktop.run(1ms);
    EXPECT_EQ(desktop.toolkit().panels().size(), 1u);
    desktop.delegate().openSettings();
    EXPECT_EQ(desktop.toolkit().formWindows().size(), 1u);
}

TEST(StatusItem, IsAbsentByDefaultAndNothingIsOfferedWithoutADock) {
    BarDesktop desktop;
    desktop.startMorvel();
    EXPECT_EQ(desktop.toolkit().statusMenu(), nullptr);
    EXPECT_EQ(desktop.toolkit().alert(), nullptr);
    EXPECT_TRUE(desktop.loginItem().isRegistered);
    desktop.settings().startAtLogin.set(false);
    EXPECT_FALSE(desktop.loginItem().isRegistered);
}

}  // namespace
}  // namespace morvel
