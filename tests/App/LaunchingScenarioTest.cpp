// Pinned items are clicked, on a desktop with two displays and two Spaces on the second.
#include "App/BarDesktop.h"

namespace morvel {
namespace {

constexpr DisplayID kSecond{2};

class Launching : public testing::Test {
protected:
    Launching() {
        desktop.workspace().installed["com.example.notes"] = "/Applications/Notes.app";
        elsewhere = desktop.addSpace(kSecond);
    }
    void start() {
        desktop.startMorvel();
        desktop.journal().clear();
    }
    /// On the second display.
    void click(const PinnedItem& item = PinnedItem::app("com.example.notes", "Notes")) {
        desktop.delegate().pinnedItemLauncher()->click(item, kSecond);
        desktop.settle();
    }
    std::set<SpaceID> spacesOf(const sim::SimWindow& window) {
        return desktop.windowServer().windowSpaces[window.number()];
    }
    sim::SimApp& notes() {
        for (const RunningApplication& running : desktop.workspace().running)
            if (running.bundleID == "com.example.notes") return *desktop.app(running.pid);
        throw std::runtime_error("it does not run");
    }

    BarDesktop desktop{sim::twoDisplays()};
    SpaceID elsewhere;
};

TEST_F(Launching, AnApplicationThatDoesNotRunOpensOnTheClickedDisplay) {
    auto& editor = desktop.launch("Editor").open({.title = "draft"});
    editor.focus();
    start();
    click();
    EXPECT_EQ(desktop.strip(0), "draft");
    EXPECT_EQ(desktop.strip(1), "Notes*");
    EXPECT_TRUE(notes().isFrontmost()) << "it comes to the front with its window, not before";
    desktop.run(10s);
    EXPECT_EQ(desktop.strip(1), "Notes*");
}

TEST_F(Launching, ARunningOneOpensANewWindowAndTheOthersStay) {
    auto& app = desktop.launch("Notes");
    auto& first = app.open({.title = "first"});
    app.setMenuItem("New Window", "N", [&] {
        app.open({.title = "second"});
        return AXError::Success;
    });
    start();
    click();
    EXPECT_EQ(desktop.strip(0), "first");
    EXPECT_EQ(desktop.strip(1), "second*");
    EXPECT_EQ(desktop.journal().count(first.element(), "AX"), 0) << "nobody touches the window that was there";
    desktop.delegate().pinnedItemLauncher()->launchNewInstance(PinnedItem::app("com.example.notes", "Notes"),
                                                               DisplayID{1});
    EXPECT_EQ(desktop.strip(0), "first Notes*");
    EXPECT_EQ(desktop.workspace().running.size(), 2u);
}

TEST_F(Launching, AWindowOfAnotherSpaceIsLentWhileItsApplicationComesToTheFront) {
    auto& window = desktop.launch("Notes").open({.x = 2000, .title = "first", .space = elsewhere});
    start();
    const SpaceID here = desktop.currentSpace(kSecond).value();
    click();
    EXPECT_EQ(spacesOf(window), (std::set{here, elsewhere}));
    EXPECT_TRUE(notes().isFrontmost());
    desktop.run(4099ms);
    EXPECT_EQ(spacesOf(window), (std::set{here, elsewhere}));
    desktop.run(1ms);
    EXPECT_EQ(spacesOf(window), std::set{elsewhere});
    click();
    EXPECT_EQ(spacesOf(window).size(), 2u);
    desktop.quitMorvel();
    EXPECT_EQ(spacesOf(window), std::set{elsewhere}) << "what is lent goes back when the program ends";
}

TEST_F(Launching, AFolderOpensInTheFileManager) {
    start();
    click(PinnedItem::folder("/Users/me/Docs", "Docs"));
    EXPECT_EQ(desktop.strip(1), "/Users/me/Docs*");
    click(PinnedItem::app("com.apple.finder", "Finder"));
    EXPECT_EQ(desktop.strip(1), "/Users/me/Docs /Users/me*");
}

TEST_F(Launching, AWindowThatClosesBeforeItIsSeenAndAHungApplicationHoldNothingUp) {
    auto& app = desktop.launch("Notes");
    app.open({.title = "first"});
    start();
    app.hang();
    click();
    app.recover();
    app.open({.title = "brief"}).close();
    desktop.run(10s);
    EXPECT_EQ(desktop.strip(0), "first*");
    EXPECT_EQ(desktop.strip(1), "");
}

}  // namespace
}  // namespace morvel
