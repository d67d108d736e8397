// The whole macOS host in the checked runtime: stories of a person at a Mac with two screens.
#include "Platform/Mac/MacHost.h"

#include <csignal>

#include "App/AppDelegate.h"
#include "Application.h"
#include "Drags.h"
#include "MacDesktop.h"
#include "Platform/Mac/Applications/SingleInstance.h"
#include "Platform/Mac/System/MacDefaults.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Properties.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

class Host : public RuntimeTest {
protected:
    /// Runs the program from its launch; `story` is what happens until it ends.
    void run(const std::function<void()>& story) {
        const objc::AutoreleasePool pool;
        MacHost host;
        morvel::AppDelegate application(host.platform());
        running = &application;
        settings_ = [&]() -> SettingsStore& { return *application.settings(); };
        whileRunning([&] {
            dispatch().runFor(1s);
            story();
            dispatch().runFor(0s);  // what was posted last still runs before the program ends
        });
        host.run({.launched = [&] { application.applicationDidFinishLaunching(); },
                  .quitting = [&] { application.applicationWillTerminate(); }});
    }
    /// Of the program that runs.
    SettingsStore& settings() { return settings_(); }
    static void wait(std::chrono::nanoseconds time = 2s) { dispatch().runFor(time); }
    /// The buttons of windows and groups.
    static Texts shown(std::size_t bar) {
        const objc::AutoreleasePool pool;
        const auto bars = MacDesktop::bars();
        if (bar >= bars.size()) return {"no such bar"};
        display(bars[bar].contentView());
        Texts buttons = MacDesktop::buttons(bars[bar]);
        std::erase(buttons, "Apps");
        return buttons;
    }
    static NSView content(std::size_t bar) { return MacDesktop::bars().at(bar).contentView(); }
    static CGPoint middle(std::size_t bar, const std::string& button) {
        const auto at = MacDesktop::middleOfButton(content(bar), button);
        EXPECT_TRUE(at) << "no button " << button;
        return at.value_or(CGPoint{});
    }
    static bool isMinimized(const Id& window) {
        const auto* const value = payloadOf<Number>(accessibility().value(window, "AXMinimized").raw());
        return value && std::get<bool>(*value);
    }

    MacDesktop mac;
    morvel::AppDelegate* running = nullptr;  // the one that `run` runs

private:
    std::function<SettingsStore&()> settings_;
};

TEST_F(Host, WaitsForThePermissionAndThenShowsABarOnEachScreen) {
    accessibility().isTrusted = false;
    mac.launch(42, "Editor");
    mac.open(42, "notes.txt", {100, 100});
    run([&] {
        EXPECT_TRUE(MacDesktop::bars().empty());
        EXPECT_TRUE(accessibility().hasPrompted);
        const auto calls = runtime().calls();
        const auto made = std::ranges::find(calls, "makeKeyAndOrderFront:", &Call::selector);
        ASSERT_NE(made, calls.end());
        const NSWindow prompt{Id(made->receiver)};
        EXPECT_TRUE(prompt.isVisible());
        accessibility().isTrusted = true;
        wait();
        EXPECT_FALSE(prompt.isVisible());
        ASSERT_EQ(MacDesktop::bars().size(), 2U);
        EXPECT_EQ(MacDesktop::bars()[0].frame().origin, (CGPoint{0, 0}));
        EXPECT_EQ(MacDesktop::bars()[1].frame().origin, (CGPoint{1440, 0}));
        EXPECT_EQ(shown(0), Texts{"notes.txt"});
        EXPECT_EQ(shown(1), Texts{});
    });
}

TEST_F(Host, ButtonsFollowWindows) {
    mac.launch(42, "Editor");
    Id notes = mac.open(42, "notes.txt", {100, 100});
    run([&] {
        EXPECT_EQ(shown(0), Texts{"notes.txt"});
        const Id other = mac.open(42, "draft.txt", {1600, 100});
        mac.launch(43, "Mail");
        const Id inbox = mac.open(43, "Inbox", {200, 200});
        wait();
        EXPECT_EQ(shown(0), (Texts{"notes.txt", "Inbox"}));
        EXPECT_EQ(shown(1), Texts{"draft.txt"});
        mac.rename(inbox, "Inbox (3)");
        wait();
        EXPECT_EQ(shown(0), (Texts{"notes.txt", "Inbox (3)"}));
        mac.close(notes);
        wait();
        EXPECT_EQ(shown(0), Texts{"Inbox (3)"});
        workspace().quit(43);
        wait();
        EXPECT_EQ(shown(0), Texts{});
        EXPECT_EQ(shown(1), Texts{"draft.txt"});
    });
}

TEST_F(Host, AClickRaisesAndASecondOneMinimizes) {
    mac.launch(42, "Editor");
    const Id notes = mac.open(42, "notes.txt", {100, 100});
    const Id draft = mac.open(42, "draft.txt", {200, 100});
    mac.launch(43, "Mail");
    const Id inbox = mac.open(43, "Inbox", {200, 200});
    mac.focus(inbox);
    run([&] {
        accessibility().log.clear();
        ASSERT_TRUE(MacDesktop::clickButton(content(0), "notes.txt"));
        wait();
        EXPECT_EQ(workspace().frontmost().processIdentifier(), 42);
        EXPECT_EQ(std::ranges::count(accessibility().log, "perform AXRaise"), 1);
        EXPECT_FALSE(isMinimized(notes));
        ASSERT_TRUE(MacDesktop::clickButton(content(0), "notes.txt"));
        wait();
        EXPECT_TRUE(isMinimized(notes));
        EXPECT_FALSE(isMinimized(draft));
        for (const NSPanel& bar : MacDesktop::bars())
            EXPECT_FALSE(send<bool>(bar, "canBecomeKeyWindow"_sel)) << "the clicks left the focus where it was";
    });
}

TEST_F(Host, MenusOpenOnButtonsAndOnTheBar) {
    mac.launch(42, "Editor");
    mac.open(42, "notes.txt", {100, 100});
    bool hasQuit = false;
    run([&] {
        Texts titles;
        whenMenuPopsUp([&](const NSMenu& menu) {
            titles.clear();
            for (const NSMenuItem& item : menu.items().elements<NSMenuItem>())
                titles.push_back(send<NSString>(item, "title"_sel).text());
            EXPECT_TRUE(choose(itemTitled(menu, "Quit Editor")));
        });
        ASSERT_TRUE(MacDesktop::rightClickButton(content(0), "notes.txt"));
        EXPECT_EQ(titles, (Texts{"Close Window", "Quit Editor", "Pin App to Morvel", "", "Move to Display"}));
        wait();
        EXPECT_FALSE(workspace().withPid(42));
        EXPECT_EQ(shown(0), Texts{});

        runtime().script("NSApplication", "terminate:", [&](Invocation& i) {
            hasQuit = !i.object(0);
            const Id delegate = send<Id>(i.receiver(), "delegate"_sel);
            send(delegate, "applicationWillTerminate:"_sel, NSNotification());
        });
        whenMenuPopsUp([&](const NSMenu& menu) { EXPECT_TRUE(choose(itemTitled(menu, "Quit Morvel"))); });
        sendMouse(content(0), "rightMouseDown:", mouseEvent(NSEventTypeRightMouseDown, {1300, 10}));
    });
    EXPECT_TRUE(hasQuit) << "with no sender";
}

TEST_F(Host, ACrowdedBarGroupsAndAPopoverListsAGroup) {
    mac.launch(42, "Editor");
    mac.launch(43, "Mail");
    Id last;
    for (int i = 0; i < 24; ++i) {
        mac.open(42, "document " + std::to_string(i), {100, 100});
        last = mac.open(43, "message " + std::to_string(i), {100, 100});
    }
    run([&] {
        wait();
        const Texts groups = shown(0);
        ASSERT_EQ(groups.size(), 2U);
        ASSERT_TRUE(MacDesktop::clickButton(content(0), groups[1]));
        const auto calls = runtime().calls();
        const auto opened = std::ranges::find(calls, "showRelativeToRect:ofView:preferredEdge:", &Call::selector);
        ASSERT_NE(opened, calls.end());
        const RawObject popover = opened->receiver;
        const NSView rows{send<Id>(send<Id>(popover, "contentViewController"_sel), "view"_sel)};
        EXPECT_EQ(rows.frame().size, (CGSize{280, 24 * 36}));
        EXPECT_EQ(property<NSUInteger>(popover, "preferredEdge"), NSRectEdgeMaxY);
        display(rows);
        EXPECT_EQ(MacDesktop::buttonsIn(rows).size(), 24U);
        mac.close(last);
        wait();
        EXPECT_EQ(rows.frame().size.height, 23 * 36) << "an open list follows its windows";
        EXPECT_EQ(monitorCount(), 2U) << "of presses here and elsewhere";
        pressElsewhere(NSEventTypeLeftMouseDown);
        EXPECT_FALSE(property<bool>(popover, "shown"));
        EXPECT_EQ(monitorCount(), 0U);

        ASSERT_TRUE(MacDesktop::clickButton(content(0), shown(0)[1]));
        display(rows);
        EXPECT_TRUE(MacDesktop::clickButton(rows, "message 7"));
        wait();
        EXPECT_EQ(workspace().frontmost().processIdentifier(), 43);
        EXPECT_EQ(std::ranges::count(accessibility().log, "perform AXRaise"), 1);
        EXPECT_FALSE(property<bool>(popover, "shown"));
        EXPECT_EQ(monitorCount(), 0U);
    });
}

TEST_F(Host, TheStartButtonListsApplicationsAndOpensOne) {
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
        opened.push_back(NSURL(Id(i.object(0))).path().text());
        EXPECT_TRUE(property<bool>(i.object(1), "activates"));
    });
    run([&] {
        ASSERT_TRUE(MacDesktop::clickButton(content(0), "Apps"));
        wait();
        const auto calls = runtime().calls();
        const auto shows = std::ranges::find(calls, "showRelativeToRect:ofView:preferredEdge:", &Call::selector);
        ASSERT_NE(shows, calls.end());
        const RawObject popover = shows->receiver;
        EXPECT_EQ(property<NSUInteger>(popover, "preferredEdge"), NSRectEdgeMaxY);
        const NSView launcher{send<Id>(send<Id>(popover, "contentViewController"_sel), "view"_sel)};
        EXPECT_EQ(launcher.frame().size, (CGSize{320, 400}));
        display(launcher);
        EXPECT_EQ(MacDesktop::buttonsIn(launcher), Texts{"Notes"});
        EXPECT_TRUE(MacDesktop::clickButton(launcher, "Notes"));
        EXPECT_EQ(opened, Texts{"/Applications/Notes.app"});
        EXPECT_FALSE(property<bool>(popover, "shown"));
        EXPECT_EQ(monitorCount(), 0U);
        for (const NSPanel& bar : MacDesktop::bars())
            EXPECT_FALSE(send<bool>(bar, "canBecomeKeyWindow"_sel)) << "only the popover takes the keyboard";
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
        wait();
        EXPECT_EQ(shown(0), Texts{"notes.txt"});
    });
}

TEST_F(Host, APinnedApplicationOpensItsNewWindowOnTheClickedScreen) {
    mac.launch(42, "Editor");
    const Id old = mac.open(42, "notes.txt", {100, 100});
    auto& world = accessibility();
    // Menu bar, menu, item, from the inside.
    const Id item = world.makeElement(42);
    world.set(item, "AXTitle", makeString("New Window"));
    world.set(item, "AXMenuItemCmdChar", makeString("N"));
    world.set(item, "AXMenuItemCmdModifiers", makeNumber(std::int64_t{0}));
    Id outer = item;
    for (int i = 0; i < 3; ++i) {
        const Id parent = world.makeElement(42);
        world.set(parent, "AXChildren", makeArray({outer}));
        outer = parent;
    }
    world.set(world.application(42), "AXMenuBar", outer);
    runtime().script("NSWorkspace", "URLForApplicationWithBundleIdentifier:", [](Invocation& i) {
        i.answerObject(NSURL::file("/Applications/Editor.app"));
    });
    run([&] {
        Id fresh;
        world.performed = [&](const ElementIdentity&, const std::string& action) {
            if (action == "AXPress") fresh = mac.open(42, "Untitled", {200, 200});
        };
        running->pinnedItemLauncher()->click(PinnedItem::app("app.example.Editor", "Editor"), DisplayID{2});
        wait();
        ASSERT_TRUE(fresh);
        EXPECT_EQ(shown(1), Texts{"Untitled"});
        EXPECT_EQ(shown(0), Texts{"notes.txt"});
        EXPECT_EQ(workspace().frontmost().processIdentifier(), 42);
        wait(5s);
        world.performed = nullptr;
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

TEST_F(Host, ACompactBarStandsBesideTheMenuBar) {
    runtime().script("NSStatusBar", "thickness", [](Invocation& i) { i.answer<double>(22); });
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
    const Id notes = mac.open(42, "notes.txt", {100, 100});
    mac.focus(notes);
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
        EXPECT_EQ(shown(1), Texts{"Expand status icons"});
        EXPECT_TRUE(MacDesktop::clickButton(content(1), "Expand status icons"));
        EXPECT_EQ(frames()[0], (CGRect{{178, 876}, {1192 - 178, 24}}));
        EXPECT_EQ(shown(1), Texts{"Collapse status icons"});
        const auto& calls = runtime().callNames();
        EXPECT_EQ(std::ranges::count(calls, "MorvelPanel initWithContentRect:styleMask:backing:defer:"), 4);

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

TEST_F(Host, ButtonsAreDraggedWithinABarAndToTheOther) {
    mac.launch(42, "Editor");
    mac.open(42, "notes.txt", {100, 100});
    mac.launch(43, "Mail");
    mac.open(43, "Inbox", {200, 200});
    mac.open(43, "Outbox", {1600, 200});
    run([&] {
        ASSERT_EQ(shown(0), (Texts{"notes.txt", "Inbox"}));
        CGPoint last = middle(0, "Inbox");
        last.x += 20;  // past its middle
        ASSERT_TRUE(MacDesktop::pullButton(content(0), "notes.txt"));
        ASSERT_TRUE(ownDrag());
        {
            DragOver drag(pasteboardOfOwnDrag());
            drag.moveTo(content(0), middle(0, "notes.txt"));
            EXPECT_EQ(drag.moveTo(content(0), last), NSDragOperationMove);
            display(content(0));
            wait(1s);
            EXPECT_EQ(shown(0), (Texts{"Inbox", "notes.txt"})) << "the others make room while it is held";
            EXPECT_TRUE(drag.drop());
        }
        endOwnDrag(NSDragOperationMove);
        wait();
        EXPECT_EQ(shown(0), (Texts{"Inbox", "notes.txt"}));

        accessibility().log.clear();
        ASSERT_TRUE(MacDesktop::pullButton(content(0), "Inbox"));
        ASSERT_TRUE(ownDrag());
        {
            DragOver drag(pasteboardOfOwnDrag());
            drag.moveTo(content(0), last);
            CGPoint first = middle(1, "Outbox");
            first.x -= 20;  // before its middle
            EXPECT_EQ(drag.moveTo(content(1), first), NSDragOperationMove);
            EXPECT_TRUE(drag.drop());
        }
        endOwnDrag(NSDragOperationMove);
        wait();
        EXPECT_GE(std::ranges::count(accessibility().log, "set AXPosition"), 1);
        EXPECT_EQ(shown(0), Texts{"notes.txt"});
        EXPECT_EQ(shown(1), (Texts{"Inbox", "Outbox"})) << "its window is there, its button where it was dropped";
    });
}

TEST_F(Host, PinnedItemsAreShownMovedAndKept) {
    mac.launch(42, "Editor");
    mac.open(42, "notes.txt", {100, 100});
    const auto dot = [](const NSView& bar) {
        const objc::AutoreleasePool pool;
        display(bar);
        const NSView button = MacDesktop::button(bar, "Editor");
        return !property<bool>(button.subviews().elements<NSView>().back().raw(), "hidden");
    };
    run([&] {
        whenMenuPopsUp([&](const NSMenu& menu) { EXPECT_TRUE(choose(itemTitled(menu, "Pin App to Morvel"))); });
        ASSERT_TRUE(MacDesktop::rightClickButton(content(0), "notes.txt"));
        wait();
        EXPECT_EQ(shown(0), (Texts{"Editor", "notes.txt"}));
        EXPECT_EQ(shown(1), Texts{"Editor"}) << "on every bar";
        EXPECT_TRUE(dot(content(0)));
        {
            DragOver drag(makeFiles({"/Users/me/Documents"}));
            CGPoint behind = middle(1, "Editor");
            behind.x += 5;
            EXPECT_EQ(drag.moveTo(content(1), behind), NSDragOperationCopy);
            EXPECT_TRUE(drag.drop());
        }
        EXPECT_EQ(shown(0), (Texts{"Editor", "Documents", "notes.txt"}));
        ASSERT_TRUE(MacDesktop::pullButton(content(0), "Documents"));
        ASSERT_TRUE(ownDrag());
        {
            DragOver drag(pasteboardOfOwnDrag());
            CGPoint front = middle(0, "Editor");
            front.x -= 12;
            drag.moveTo(content(0), front);
            EXPECT_EQ(drag.moveTo(content(0), front), NSDragOperationMove);
            EXPECT_TRUE(drag.drop());
        }
        endOwnDrag(NSDragOperationMove);
        display(content(0));
        wait();
        EXPECT_EQ(shown(0), (Texts{"Documents", "Editor", "notes.txt"}));
        workspace().quit(42);
        wait();
        EXPECT_FALSE(dot(content(0)));
    });
    run([&] {
        EXPECT_EQ(shown(0), (Texts{"Documents", "Editor"})) << "after a restart";
        Texts titles;
        whenMenuPopsUp([&](const NSMenu& menu) {
            for (const NSMenuItem& item : menu.items().elements<NSMenuItem>())
                titles.push_back(send<NSString>(item, "title"_sel).text());
            EXPECT_TRUE(choose(itemTitled(menu, "Unpin from Morvel")));
        });
        ASSERT_TRUE(MacDesktop::rightClickButton(content(0), "Documents"));
        EXPECT_EQ(titles, (Texts{"Unpin from Morvel", "", "Show in Finder"}));
        EXPECT_EQ(shown(1), Texts{"Editor"});
    });
}

TEST_F(Host, WindowsAreKeptOutOfTheBarsStripAndGivenBack) {
    mac.launch(42, "Editor");
    const Id notes = mac.open(42, "notes.txt", {100, 560});  // its lower end is below the screen's
    accessibility().set(accessibility().application(42), "AXEnhancedUserInterface", makeNumber(true));
    run([&] {
        const auto heightOfNotes = [&] {
            CGSize size{};
            AXValueGetValue(reinterpret_cast<AXValueRef>(accessibility().value(notes, "AXSize").raw()),
                            kAXValueTypeCGSize, &size);
            return size.height;
        };
        const Texts oneWrite = {"set AXEnhancedUserInterface", "set AXPosition", "set AXEnhancedUserInterface",
                                "set AXEnhancedUserInterface", "set AXSize",     "set AXEnhancedUserInterface"};
        const auto written = [] {
            Texts deeds;
            for (const std::string& deed : std::exchange(accessibility().log, {}))
                if (deed.starts_with("set ")) deeds.push_back(deed);
            return deeds;
        };
        EXPECT_EQ(written(), oneWrite);
        EXPECT_EQ(heightOfNotes(), 900 - 44 - 560);
        accessibility().post(notes, "AXWindowMoved");
        accessibility().post(notes, "AXWindowResized");
        wait();
        EXPECT_EQ(written(), Texts{}) << "our own echo";
        settings().clampWindows.set(false);
        wait();
        EXPECT_EQ(written(), oneWrite);
        EXPECT_EQ(heightOfNotes(), 400);
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

TEST_F(Host, TheThemeIsTheApplicationsAppearance) {
    run([&] {
        const auto appearance = [] { return property<RawObject>(NSApplication::shared().raw(), "appearance"); };
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

TEST_F(Host, AFurtherInstanceWakesTheFirst) {
    NSRunningApplication own = workspace().launch({.pid = 7, .bundleIdentifier = "app.bar", .name = "Bar"});
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
    // Two that start at once: exactly one stays.
    const auto startsAgainst = [&](double launchedOwn, double launchedOther) {
        own = workspace().launch({.pid = 7, .bundleIdentifier = "app.bar", .name = "Bar", .launched = launchedOwn});
        instances = {own, workspace().launch(
                              {.pid = 9, .bundleIdentifier = "app.bar", .name = "Bar", .launched = launchedOther})};
        return handOverToRunningInstance();
    };
    EXPECT_FALSE(startsAgainst(1000, 1000)) << "the lower number stays";
    EXPECT_FALSE(startsAgainst(1000, 1001));
    EXPECT_TRUE(startsAgainst(1001, 1000));
    int wakings = 0;
    const Subscription token = observeFurtherInstances([&] { ++wakings; });
    post(Center::Distributed, NSString::from("app.bar.openedAgain").raw(), Id());
    EXPECT_EQ(wakings, 1);
}

TEST_F(Host, AFileThatRestsOnAButtonRaisesItsWindow) {
    mac.launch(42, "Editor");
    mac.open(42, "notes.txt", {100, 100});
    mac.launch(43, "Mail");
    mac.focus(mac.open(43, "Inbox", {200, 200}));
    run([&] {
        ASSERT_EQ(workspace().frontmost().processIdentifier(), 43);
        DragOver drag(makeFiles({"/tmp/picture.png"}));
        drag.moveTo(content(0), middle(0, "notes.txt"));
        wait(500ms);
        EXPECT_EQ(workspace().frontmost().processIdentifier(), 43) << "not yet";
        wait(1s);
        EXPECT_EQ(workspace().frontmost().processIdentifier(), 42);
        drag.end();
        wait();
    });
}

}  // namespace
}  // namespace morvel::mac::checked
