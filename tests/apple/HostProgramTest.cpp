// The program on a whole Mac beside its windows' buttons: the permission, launching, pinned items, the menu bar, the
// Dock, and what its settings change in the system.
#include <csignal>

#include "HostStory.h"
#include "Platform/Mac/Applications/SingleInstance.h"
#include "Platform/Mac/System/MacDefaults.h"

namespace morvel::mac::checked {
namespace {

class HostProgram : public HostStory {};

TEST_F(HostProgram, WaitsForThePermissionAndAsksAgainWhenItIsTakenAway) {
    accessibility().isTrusted = false;
    mac.launch(42, "Editor");
    const Id notes = mac.open(42, "notes.txt", {100, 100});
    std::vector<bool> hadPrompted;
    runtime().script("NSApplication", "activateIgnoringOtherApps:", [&](Invocation&) {
        hadPrompted.push_back(accessibility().hasPrompted);
    });
    run([&] {
        const Texts inOrder = {"setDelegate:", "setActivationPolicy:", "run",
                               "makeKeyAndOrderFront:", "activateIgnoringOtherApps:"};
        EXPECT_EQ(sentOf(inOrder), inOrder);
        EXPECT_TRUE(MacDesktop::bars().empty());
        EXPECT_TRUE(accessibility().hasPrompted);
        EXPECT_EQ(hadPrompted, std::vector<bool>{false}) << "the system's own prompt comes over our window";
        const NSWindow first = keyWindow();
        accessibility().isTrusted = true;
        wait(900ms);
        EXPECT_TRUE(first.isVisible()) << "asked each second";
        wait(200ms);
        EXPECT_FALSE(first.isVisible());
        ASSERT_EQ(MacDesktop::bars().size(), 2U);
        EXPECT_EQ(MacDesktop::bars()[0].frame().origin, (CGPoint{0, 0}));
        EXPECT_EQ(MacDesktop::bars()[1].frame().origin, (CGPoint{1440, 0}));
        EXPECT_EQ(shown(0), Texts{"notes.txt"});
        EXPECT_EQ(shown(1), Texts{});

        accessibility().isTrusted = false;
        accessibility().post(notes, "AXTitleChanged");
        wait();
        const NSWindow second = keyWindow();
        EXPECT_TRUE(second.isVisible());
        accessibility().isTrusted = true;
        wait();
        EXPECT_FALSE(second.isVisible());
        mac.rename(notes, "draft.txt");
        wait();
        EXPECT_EQ(shown(0), Texts{"draft.txt"});
    });
}

TEST_F(HostProgram, ListsApplicationsAtItsStartButtonAndOpensOne) {
    runtime().script("NSFileManager", "contentsOfDirectoryAtPath:error:", [](Invocation& i) {
        if (textOf(i.object(0)) == "/Applications")
            i.answerObject(makeArray({makeString("Notes.app"), makeString("read me.txt")}));
    });
    runtime().script("NSBundle", "infoDictionary", [](Invocation& i) {
        i.answerObject(makeDictionary({{makeString("CFBundleIdentifier"), makeString("com.example.notes")},
                                       {makeString("CFBundleName"), makeString("Notes")}}));
    });
    Texts opened;
    runtime().script("NSWorkspace", "openApplicationAtURL:configuration:completionHandler:", [&](Invocation& i) {
        opened.push_back(NSURL(i.object(0)).path().text());
        EXPECT_TRUE(property<bool>(i.object(1), "activates"));
    });
    run([&] {
        click(0, "Apps");
        wait();
        const Id popover = lastPopover();
        const NSView launcher = contentOf(popover);
        EXPECT_EQ(launcher.frame().size, (CGSize{320, 400}));
        EXPECT_EQ(MacDesktop::buttonsIn(launcher), Texts{"Notes"});
        MacDesktop::clickButton(launcher, "Notes");
        EXPECT_EQ(opened, Texts{"/Applications/Notes.app"});
        EXPECT_FALSE(property<bool>(popover, "shown"));
        EXPECT_EQ(monitorCount(), 0U);
        expectNoBarTakesTheKeyboard();  // only the popover does
    });
}

TEST_F(HostProgram, KeepsWhatIsPinnedOnEveryBar) {
    mac.launch(42, "Editor");
    mac.open(42, "notes.txt", {100, 100});
    run([&] {
        whenMenuPopsUp([&](const NSMenu& menu) { EXPECT_TRUE(choose(menu, "Pin App to Morvel")); });
        rightClick(0, "notes.txt");
        wait();
        EXPECT_EQ(shown(1), Texts{"Editor"});
        {
            DragOver drag(makeFiles({"/Users/me/Documents"}));
            EXPECT_EQ(drag.moveTo(content(1), beside(1, "Editor", 5)), NSDragOperationCopy);
            EXPECT_TRUE(drag.drop());
        }
        EXPECT_EQ(shown(0), (Texts{"Editor", "Documents", "notes.txt"}));
        drag("Documents", 0, beside(0, "Editor", -12));
        EXPECT_EQ(shown(0), (Texts{"Documents", "Editor", "notes.txt"}));
    });
    run([&] {
        EXPECT_EQ(shown(0), (Texts{"Documents", "Editor", "notes.txt"})) << "after a restart";
        whenMenuPopsUp([&](const NSMenu& menu) { EXPECT_TRUE(choose(menu, "Unpin from Morvel")); });
        rightClick(0, "Documents");
        EXPECT_EQ(shown(1), Texts{"Editor"});
    });
}

TEST_F(HostProgram, OpensAPinnedApplicationsNewWindowOnTheClickedScreen) {
    mac.launch(42, "Editor");
    mac.open(42, "notes.txt", {100, 100});
    auto& world = accessibility();
    const Id item = world.makeElement(42);
    world.set(item, "AXTitle", makeString("New Window"));
    world.set(item, "AXMenuItemCmdChar", makeString("N"));
    world.set(item, "AXMenuItemCmdModifiers", makeNumber(std::int64_t{0}));
    Id outer = item;
    for (int i = 0; i < 3; ++i) {  // the menu, its title, the menu bar
        const Id parent = world.makeElement(42);
        world.set(parent, "AXChildren", makeArray({outer}));
        outer = parent;
    }
    world.set(world.application(42), "AXMenuBar", outer);
    runtime().script("NSWorkspace", "URLForApplicationWithBundleIdentifier:", [](Invocation& i) {
        i.answerObject(NSURL::file("/Applications/Editor.app"));
    });
    run([&] {
        world.performed = [&](const ElementIdentity&, const std::string& action) {
            if (action == "AXPress") mac.open(42, "Untitled", {200, 200});
        };
        running->pinnedItemLauncher()->click(PinnedItem::app("app.example.Editor", "Editor"), DisplayID{2});
        wait();
        EXPECT_EQ(shown(1), Texts{"Untitled"});
        EXPECT_EQ(shown(0), Texts{"notes.txt"});
        EXPECT_EQ(frontmost(), 42);
        wait(5s);
    });
}

TEST_F(HostProgram, StandsBesideTheMenuBarWithACompactBar) {
    answer("NSStatusBar", "thickness", 22.0);
    MacDefaults defaults;
    defaults.set("barEdge", {std::string("top")});
    defaults.set("autoDetectMacOSMenuWidth", {true});
    windowServer().windows.push_back({.number = 1, .layer = 24, .pid = 1, .bounds = {{0, 0}, {1440, 24}}});
    mac.launch(42, "Editor");
    mac.launch(43, "Mail");
    mac.launch(50, "Extras");
    mac.showInMenuBar(42, "AXMenuBar", {10, 60, 120}, 50);
    mac.showInMenuBar(43, "AXMenuBar", {10, 60}, 50);
    mac.showInMenuBar(50, "AXExtrasMenuBar", {1380, 1320, 1260, 1200}, 60);
    mac.focus(mac.open(42, "notes.txt", {100, 100}));
    run([&] {
        // The bars, from the left, and the toggle's panel of each: over the bar's right end.
        const auto frames = [] {
            std::vector<CGRect> all;
            for (const NSPanel& panel : MacDesktop::bars()) all.push_back(panel.frame());
            return all;
        };
        const CGRect leftToggle{{1312 - 21, 876}, {21, 24}};
        ASSERT_EQ(frames().size(), 4U);
        EXPECT_EQ(frames()[0], (CGRect{{178, 876}, {1312 - 178, 24}}));
        EXPECT_EQ(frames()[1], leftToggle);
        EXPECT_EQ(frames()[2], (CGRect{{1440, 876}, {1440 - 200, 24}})) << "nobody tells what stands there";
        click(1, "Expand status icons");
        EXPECT_EQ(frames()[0], (CGRect{{178, 876}, {1192 - 178, 24}}));
        EXPECT_EQ(shown(1), Texts{"Collapse status icons"});
        EXPECT_EQ(callsOf("MorvelPanel initWithContentRect:styleMask:backing:defer:"), 4);

        workspace().activate(43);
        wait();
        EXPECT_EQ(frames()[0], (CGRect{{118, 876}, {1192 - 118, 24}}));
        workspace().activate(42);
        wait();
        accessibility().failProcess(42, kAXErrorCannotComplete);
        workspace().activate(42);
        wait();
        EXPECT_EQ(frames()[0].origin.x, 0) << "it does not tell its menus any more, and holds nothing up";
    });
}

TEST_F(HostProgram, OffersToHideTheDockAndUndoesThatWhenItIsToldToEnd) {
    Texts lines, questions;
    bool isWithinQuestion = false;
    runtime().script("NSTask", "launchAndReturnError:", [&](Invocation& i) {
        const auto words = property<NSArray>(i.receiver(), "arguments").elements<NSString>();
        ASSERT_EQ(words.size(), 2U);
        EXPECT_EQ(words[0].text(), "-c");
        lines.push_back(words[1].text().substr(0, words[1].text().find(';')));
        i.answer<bool>(true);
    });
    answer("NSTask", "terminationReason", NSInteger{1});
    runtime().script("NSAlert", "runModal", [&](Invocation& i) {
        EXPECT_FALSE(std::exchange(isWithinQuestion, true)) << "one after the other";
        questions.push_back(textProperty(i.receiver(), "messageText"));
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

TEST_F(HostProgram, FollowsTheSettingsOfStatusItemLoginItemAndTheme) {
    run([&] {
        EXPECT_EQ(callsOf("NSStatusBar statusItemWithLength:"), 0);
        EXPECT_EQ(callsOf("SMAppService registerAndReturnError:"), 1);
        settings().showMenuBarIcon.set(true);
        EXPECT_EQ(callsOf("NSStatusBar statusItemWithLength:"), 1);
        EXPECT_EQ(callsOf("NSStatusBarButton setImagePosition:"), 1);
        EXPECT_EQ(callsOf("NSStatusItem setMenu:"), 1);
        settings().showMenuBarIcon.set(false);
        EXPECT_EQ(callsOf("NSStatusBar removeStatusItem:"), 1);
        settings().startAtLogin.set(false);
        EXPECT_EQ(callsOf("SMAppService unregisterAndReturnError:"), 1);

        const auto appearance = [] { return property<RawObject>(NSApplication::shared(), "appearance"); };
        const auto named = [](RawObject name) { return NSAppearance::named(NSString(name)).raw(); };
        EXPECT_EQ(appearance(), nullptr) << "the system's";
        settings().theme.set(morvel::Theme::Dark);
        EXPECT_EQ(appearance(), named(NSAppearanceNameDarkAqua));
        settings().theme.set(morvel::Theme::Light);
        EXPECT_EQ(appearance(), named(NSAppearanceNameAqua));
        settings().theme.set(morvel::Theme::System);
        EXPECT_EQ(appearance(), nullptr);
    });
}

TEST_F(HostProgram, WakesTheFirstOfItsInstances) {
    const auto instance = [](std::int32_t pid, double launched = 0) {
        return workspace().launch({.pid = pid, .bundleIdentifier = "app.bar", .name = "Bar", .launched = launched});
    };
    NSRunningApplication own = instance(7);
    Elements instances = {own};
    runtime().script("NSRunningApplication", "+currentApplication", [&](Invocation& i) { i.answerObject(own); });
    runtime().script("NSRunningApplication", "+runningApplicationsWithBundleIdentifier:", [&](Invocation& i) {
        i.answerObject(makeArray(instances));
    });
    const Texts wakings = {"postNotificationName:object:userInfo:deliverImmediately:"};
    EXPECT_FALSE(handOverToRunningInstance());
    EXPECT_EQ(sentOf(wakings), Texts{});
    instances.push_back(instance(8));
    EXPECT_TRUE(handOverToRunningInstance());
    EXPECT_EQ(sentOf(wakings), wakings);
    // Two that start at once: exactly one stays.
    const auto startsAgainst = [&](double launchedOwn, double launchedOther) {
        own = instance(7, launchedOwn);
        instances = {own, instance(9, launchedOther)};
        return handOverToRunningInstance();
    };
    EXPECT_FALSE(startsAgainst(1000, 1000)) << "the lower number stays";
    EXPECT_FALSE(startsAgainst(1000, 1001));
    EXPECT_TRUE(startsAgainst(1001, 1000));
    int heard = 0;
    const Subscription token = observeFurtherInstances([&] { ++heard; });
    post(Center::Distributed, NSString::from("app.bar.openedAgain").raw(), Id());
    EXPECT_EQ(heard, 1);
}

}  // namespace
}  // namespace morvel::mac::checked
