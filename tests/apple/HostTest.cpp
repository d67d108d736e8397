// The life of the whole macOS host in the checked runtime: permission, screens, Spaces, offers, and what goes wrong.
#include <csignal>

#include "HostStory.h"
#include "Platform/Mac/Applications/SingleInstance.h"

namespace morvel::mac::checked {
namespace {

class Host : public HostStory {};

TEST_F(Host, WaitsForThePermissionAndThenShowsABarOnEachScreen) {
    accessibility().isTrusted = false;
    mac.launch(42, "Editor");
    mac.open(42, "notes.txt", {100, 100});
    std::vector<bool> hadPrompted;
    runtime().script("NSApplication", "activateIgnoringOtherApps:", [&](Invocation&) {
        hadPrompted.push_back(accessibility().hasPrompted);
    });
    run([&] {
        const Texts inOrder = {"setDelegate:", "setActivationPolicy:", "run",
                               "makeKeyAndOrderFront:", "activateIgnoringOtherApps:"};
        EXPECT_EQ(callsOf(inOrder), inOrder);
        EXPECT_TRUE(MacDesktop::bars().empty());
        EXPECT_TRUE(accessibility().hasPrompted);
        EXPECT_EQ(hadPrompted, std::vector<bool>{false}) << "the system's own prompt comes over our window";
        const NSWindow prompt = keyWindow();
        EXPECT_TRUE(prompt.isVisible());
        accessibility().isTrusted = true;
        wait(900ms);
        EXPECT_TRUE(prompt.isVisible()) << "asked each second";
        wait(200ms);
        EXPECT_FALSE(prompt.isVisible());
        ASSERT_EQ(MacDesktop::bars().size(), 2U);
        EXPECT_EQ(MacDesktop::bars()[0].frame().origin, (CGPoint{0, 0}));
        EXPECT_EQ(MacDesktop::bars()[1].frame().origin, (CGPoint{1440, 0}));
        EXPECT_EQ(shown(0), Texts{"notes.txt"});
        EXPECT_EQ(shown(1), Texts{});
    });
}

TEST_F(Host, ShowsItsWindowAgainWhenThePermissionIsTakenAway) {
    mac.launch(42, "Editor");
    const Id notes = mac.open(42, "notes.txt", {100, 100});
    run([&] {
        EXPECT_FALSE(keyWindow());
        accessibility().isTrusted = false;
        accessibility().post(notes, "AXTitleChanged");
        wait();
        const NSWindow prompt = keyWindow();
        ASSERT_TRUE(prompt);
        EXPECT_TRUE(prompt.isVisible());
        accessibility().isTrusted = true;
        wait();
        EXPECT_FALSE(prompt.isVisible());
        mac.rename(notes, "draft.txt");
        wait();
        EXPECT_EQ(shown(0), Texts{"draft.txt"});
    });
}

TEST_F(Host, BarsShowTheWindowsOfTheSpace) {
    mac.launch(42, "Editor");
    mac.open(42, "notes.txt", {100, 100});
    run([&] {
        mac.showSpace(2);
        wait();
        EXPECT_EQ(shown(0), Texts{});
        mac.open(42, "draft.txt", {100, 100});
        wait();
        EXPECT_EQ(shown(0), Texts{"draft.txt"});
        mac.showSpace(1);
        windowServer().spaceChanged(1327);
        wait();
        EXPECT_EQ(shown(0), Texts{"notes.txt"});
    });
}

TEST_F(Host, AScreenIsUnpluggedAndComesBack) {
    mac.launch(42, "Editor");
    mac.open(42, "notes.txt", {1600, 100});
    run([&] {
        EXPECT_EQ(shown(1), Texts{"notes.txt"});
        mac.unplugRight();
        wait();
        ASSERT_EQ(MacDesktop::bars().size(), 1U);
        mac.plugInBoth();
        wait();
        EXPECT_EQ(MacDesktop::bars().size(), 2U);
        EXPECT_EQ(shown(1), Texts{"notes.txt"});
    });
}

TEST_F(Host, AnApplicationThatHangsKeepsItsButtonsAndHoldsNothingUp) {
    mac.launch(42, "Editor");
    mac.open(42, "notes.txt", {100, 100});
    mac.launch(43, "Mail");
    run([&] {
        accessibility().failProcess(42, kAXErrorCannotComplete);
        mac.open(43, "Inbox", {200, 200});
        wait(5s);
        EXPECT_EQ(shown(0), (Texts{"notes.txt", "Inbox"}));
        ASSERT_TRUE(MacDesktop::clickButton(content(0), "notes.txt"));
        wait(60s);
        EXPECT_EQ(shown(0), (Texts{"notes.txt", "Inbox"})) << "silence is no closing";
        accessibility().failProcess(42, kAXErrorSuccess);
        mac.open(42, "draft.txt", {100, 100});
        wait(5s);
        EXPECT_EQ(shown(0).size(), 3U);
    });
}

TEST_F(Host, RunsWhereThePrivateFunctionsAreMissing) {
    for (const char* function :
         {"CGSMainConnectionID", "CGSGetActiveSpace", "CGSCopyManagedDisplaySpaces", "CGSCopySpacesForWindows",
          "CGSAddWindowsToSpaces", "CGSRemoveWindowsFromSpaces", "CGSMoveWindowsToManagedSpace",
          "SLSRegisterConnectionNotifyProc", "_AXUIElementGetWindow"})
        windowServer().hide(function);
    mac.launch(42, "Editor");
    mac.open(42, "notes.txt", {100, 100});
    run([&] {
        EXPECT_EQ(MacDesktop::bars().size(), 2U);
        EXPECT_EQ(shown(0), Texts{"notes.txt"});
        EXPECT_TRUE(MacDesktop::clickButton(content(0), "notes.txt"));
    });
}

TEST_F(Host, OffersToHideTheDockAndUndoesThatWhenItIsToldToEnd) {
    Texts lines, questions;
    bool isWithinQuestion = false;
    runtime().script("NSTask", "launchAndReturnError:", [&](Invocation& i) {
        const auto words = objc::as<NSArray>(Id(property<RawObject>(i.receiver(), "arguments"))).elements<NSString>();
        ASSERT_EQ(words.size(), 2U);
        EXPECT_EQ(words[0].text(), "-c");
        lines.push_back(words[1].text().substr(0, words[1].text().find(';')));
        i.answer<bool>(true);
    });
    runtime().script("NSTask", "terminationReason", [](Invocation& i) { i.answer<NSInteger>(1); });
    runtime().script("NSAlert", "runModal", [&](Invocation& i) {
        EXPECT_FALSE(std::exchange(isWithinQuestion, true)) << "one after the other";
        questions.push_back(textOf(property<RawObject>(i.receiver(), "messageText")));
        dispatch().runFor(1s);  // the program goes on meanwhile
        i.answer<NSInteger>(questions.size() == 1 ? 1000 : 1002);
        isWithinQuestion = false;
    });
    run([&] {
        wait();
        EXPECT_EQ(questions, (Texts{"Hide and shrink the macOS Dock?", "Disable macOS automatic Space switching?"}));
        EXPECT_EQ(lines, Texts{"defaults write com.apple.dock autohide -bool true"});
        lines.clear();
        dispatch().raise(SIGTERM);
        EXPECT_EQ(lines, Texts{"defaults write com.apple.dock autohide -bool false"});
    });
}

TEST_F(Host, StatusItemAndLoginItemFollowTheirSettings) {
    run([&] {
        const auto count = [](const char* call) { return std::ranges::count(runtime().callNames(), call); };
        EXPECT_EQ(count("NSStatusBar statusItemWithLength:"), 0);
        EXPECT_EQ(count("SMAppService registerAndReturnError:"), 1);
        settings().showMenuBarIcon.set(true);
        EXPECT_EQ(count("NSStatusBar statusItemWithLength:"), 1);
        EXPECT_EQ(count("NSStatusBarButton setImagePosition:"), 1);
        EXPECT_EQ(count("NSStatusItem setMenu:"), 1);
        settings().showMenuBarIcon.set(false);
        EXPECT_EQ(count("NSStatusBar removeStatusItem:"), 1);
        settings().startAtLogin.set(false);
        EXPECT_EQ(count("SMAppService unregisterAndReturnError:"), 1);
    });
}

TEST_F(Host, AFurtherInstanceWakesTheFirst) {
    const NSRunningApplication own = workspace().launch({.pid = 7, .bundleIdentifier = "app.bar", .name = "Bar"});
    Elements instances = {own};
    runtime().script("NSRunningApplication", "+currentApplication", [&](Invocation& i) { i.answerObject(own); });
    runtime().script("NSRunningApplication", "+runningApplicationsWithBundleIdentifier:", [&](Invocation& i) {
        i.answerObject(makeArray(instances));
    });
    const auto posted = [] {
        return std::ranges::count(runtime().calls(),
                                  "postNotificationName:object:userInfo:deliverImmediately:", &Call::selector);
    };
    EXPECT_FALSE(handOverToRunningInstance());
    EXPECT_EQ(posted(), 0);
    instances.push_back(workspace().launch({.pid = 8, .bundleIdentifier = "app.bar", .name = "Bar"}));
    EXPECT_TRUE(handOverToRunningInstance());
    EXPECT_EQ(posted(), 1);
    int wakings = 0;
    const Subscription token = observeFurtherInstances([&] { ++wakings; });
    post(Center::Distributed, NSString::from("app.bar.openedAgain").raw(), Id());
    EXPECT_EQ(wakings, 1);
}

}  // namespace
}  // namespace morvel::mac::checked
