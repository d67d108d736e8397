// Windows on the bars of a whole Mac: what its applications do is seen, and what a person does to a button reaches
// them.
#include "HostStory.h"

namespace morvel::mac::checked {
namespace {

/// A window of the one application that runs is open.
class HostWindows : public HostStory {
protected:
    HostWindows() {
        mac.launch(42, "Editor");
        notes = mac.open(42, "notes.txt", {100, 100});
    }
    Id notes;
};

TEST_F(HostWindows, AreFollowedOverScreensAndSpaces) {
    run([&] {
        EXPECT_EQ(shown(0), Texts{"notes.txt"});
        mac.open(42, "draft.txt", {1600, 100});
        mac.launch(43, "Mail");
        const Id inbox = mac.open(43, "Inbox", {200, 200});
        wait();
        EXPECT_EQ(shown(0), (Texts{"notes.txt", "Inbox"}));
        EXPECT_EQ(shown(1), Texts{"draft.txt"});

        mac.unplugRight();
        wait();
        ASSERT_EQ(MacDesktop::bars().size(), 1U);
        mac.plugInBoth();
        wait();
        EXPECT_EQ(shown(1), Texts{"draft.txt"});

        mac.showSpace(2);
        wait();
        EXPECT_EQ(shown(0), Texts{});
        mac.open(42, "elsewhere.txt", {100, 100});
        wait();
        EXPECT_EQ(shown(0), Texts{"elsewhere.txt"});
        mac.showSpace(1);
        windowServer().spaceChanged(1327);
        wait();
        EXPECT_EQ(shown(0), (Texts{"notes.txt", "Inbox"}));

        mac.rename(inbox, "Inbox (3)");
        mac.close(notes);
        wait();
        EXPECT_EQ(shown(0), Texts{"Inbox (3)"});
        workspace().quit(43);
        wait();
        EXPECT_EQ(shown(0), Texts{});
        EXPECT_EQ(shown(1), Texts{"draft.txt"});
    });
}

TEST_F(HostWindows, AreRaisedByAClickAndMinimizedByASecondOne) {
    mac.launch(43, "Mail");
    const Id draft = mac.open(42, "draft.txt", {200, 100});
    mac.focus(mac.open(43, "Inbox", {200, 200}));
    run([&] {
        accessibility().log.clear();
        accessibility().written = [](const ElementIdentity&, const std::string&) {
            EXPECT_EQ(frontmost(), 42) << "its application comes first";
        };
        click(0, "notes.txt");
        wait();
        EXPECT_EQ(frontmost(), 42);
        std::erase_if(accessibility().log, [](const std::string& deed) { return deed.starts_with("time-out"); });
        EXPECT_EQ(accessibility().log, (Texts{"set AXMinimized", "set AXMain", "set AXFocused", "perform AXRaise"}));
        EXPECT_FALSE(isMinimized(notes));
        click(0, "notes.txt");
        wait();
        EXPECT_TRUE(isMinimized(notes));
        EXPECT_FALSE(isMinimized(draft));
        expectNoBarTakesTheKeyboard();
    });
}

TEST_F(HostWindows, AreRaisedByAFileThatRestsOnTheirButton) {
    mac.launch(43, "Mail");
    mac.focus(mac.open(43, "Inbox", {200, 200}));
    run([&] {
        DragOver drag(makeFiles({"/tmp/picture.png"}));
        drag.moveTo(content(0), beside(0, "notes.txt", 0));
        wait(500ms);
        EXPECT_EQ(frontmost(), 43) << "not yet";
        wait(1s);
        EXPECT_EQ(frontmost(), 42);
        drag.end();
        wait();
    });
}

TEST_F(HostWindows, AndTheBarHaveMenus) {
    bool hasQuit = false;
    run([&] {
        whenMenuPopsUp([&](const NSMenu& menu) { EXPECT_TRUE(choose(menu, "Quit Editor")); });
        rightClick(0, "notes.txt");
        wait();
        EXPECT_FALSE(workspace().withPid(42));
        EXPECT_EQ(shown(0), Texts{});

        runtime().script("NSApplication", "terminate:", [&](Invocation& i) {
            hasQuit = !i.object(0);
            tell(property<Id>(i.receiver(), "delegate"), "applicationWillTerminate:", NSNotification());
        });
        whenMenuPopsUp([&](const NSMenu& menu) { EXPECT_TRUE(choose(menu, "Quit Morvel")); });
        rightClickBar();
    });
    EXPECT_TRUE(hasQuit) << "with no sender";
}

TEST_F(HostWindows, OfACrowdedBarAreListedInAPopover) {
    mac.launch(43, "Mail");
    for (int i = 0; i < 24; ++i) {
        mac.open(42, "document " + std::to_string(i), {100, 100});
        mac.open(43, "message " + std::to_string(i), {100, 100});
    }
    run([&] {
        wait();
        const Texts groups = shown(0);
        ASSERT_EQ(groups.size(), 2U);
        click(0, groups[1]);
        const Id popover = lastPopover();
        const NSView rows = contentOf(popover);
        EXPECT_EQ(rows.frame().size, (CGSize{280, 24 * 36}));
        EXPECT_EQ(property<NSUInteger>(popover, "preferredEdge"), NSRectEdgeMaxY);
        EXPECT_EQ(MacDesktop::buttonsIn(rows).size(), 24U);
        EXPECT_EQ(monitorCount(), 2U) << "of presses here and elsewhere";
        pressElsewhere(NSEventTypeLeftMouseDown);
        EXPECT_FALSE(property<bool>(popover, "shown"));
        EXPECT_EQ(monitorCount(), 0U);
        click(0, groups[1]);
        MacDesktop::clickButton(rows, "message 7");
        wait();
        EXPECT_EQ(frontmost(), 43);
        EXPECT_EQ(std::ranges::count(accessibility().log, "perform AXRaise"), 1);
        EXPECT_FALSE(property<bool>(popover, "shown"));
        EXPECT_EQ(monitorCount(), 0U);
    });
}

TEST_F(HostWindows, AreMovedByTheirButtonsWithinABarAndToTheOther) {
    mac.launch(43, "Mail");
    mac.open(43, "Inbox", {200, 200});
    mac.open(43, "Outbox", {1600, 200});
    run([&] {
        ASSERT_EQ(shown(0), (Texts{"notes.txt", "Inbox"}));
        constexpr double kPastItsMiddle = 20;
        const Texts swapped = {"Inbox", "notes.txt"};
        drag("notes.txt", 0, beside(0, "Inbox", kPastItsMiddle), [&] {
            display(content(0));
            wait(1s);
            EXPECT_EQ(shown(0), swapped) << "the others make room while it is held";
        });
        EXPECT_EQ(shown(0), swapped);

        accessibility().log.clear();
        drag("Inbox", 1, beside(1, "Outbox", -kPastItsMiddle));
        EXPECT_GE(std::ranges::count(accessibility().log, "set AXPosition"), 1);
        EXPECT_EQ(shown(0), Texts{"notes.txt"});
        EXPECT_EQ(shown(1), (Texts{"Inbox", "Outbox"})) << "its window is there, its button where it was dropped";
    });
}

TEST_F(HostWindows, AreKeptOutOfTheBarsStripAndGivenBack) {
    const Id low = mac.open(42, "low.txt", {100, 560});  // its lower end is below the screen's
    accessibility().set(accessibility().application(42), "AXEnhancedUserInterface", makeNumber(true));
    run([&] {
        const auto height = [&] {
            CGSize size{};
            AXValueGetValue(reinterpret_cast<AXValueRef>(accessibility().value(low, "AXSize").raw()),
                            kAXValueTypeCGSize, &size);
            return size.height;
        };
        const Texts oneWrite = {"set AXEnhancedUserInterface", "set AXPosition", "set AXEnhancedUserInterface",
                                "set AXEnhancedUserInterface", "set AXSize",     "set AXEnhancedUserInterface"};
        const auto written = [] {
            Texts deeds = std::exchange(accessibility().log, {});
            std::erase_if(deeds, [](const std::string& deed) { return !deed.starts_with("set "); });
            return deeds;
        };
        EXPECT_EQ(written(), oneWrite);
        EXPECT_EQ(height(), 900 - 44 - 560);
        accessibility().post(low, "AXWindowMoved");
        accessibility().post(low, "AXWindowResized");
        wait();
        EXPECT_EQ(written(), Texts{}) << "our own echo";
        settings().clampWindows.set(false);
        wait();
        EXPECT_EQ(written(), oneWrite);
        EXPECT_EQ(height(), 400);
    });
}

TEST_F(HostWindows, OfAnApplicationThatHangsKeepTheirButtonsAndHoldNothingUp) {
    mac.launch(43, "Mail");
    run([&] {
        accessibility().failProcess(42, kAXErrorCannotComplete);
        mac.open(43, "Inbox", {200, 200});
        wait(5s);
        EXPECT_EQ(shown(0), (Texts{"notes.txt", "Inbox"}));
        click(0, "notes.txt");
        wait(60s);
        EXPECT_EQ(shown(0), (Texts{"notes.txt", "Inbox"})) << "silence is no closing";
        accessibility().failProcess(42, kAXErrorSuccess);
        mac.open(42, "draft.txt", {100, 100});
        wait(5s);
        EXPECT_EQ(shown(0).size(), 3U);
    });
}

TEST_F(HostWindows, AreShownWhereThePrivateFunctionsAreMissing) {
    for (const auto& function : WindowServerWorld::functions()) windowServer().hide(function.first);
    run([&] {
        EXPECT_EQ(MacDesktop::bars().size(), 2U);
        EXPECT_EQ(shown(0), Texts{"notes.txt"});
        click(0, "notes.txt");
    });
}

}  // namespace
}  // namespace morvel::mac::checked
