// A crowded bar, its popover, and the menus.
#include "BarTest.h"

namespace morvel::e2e {
namespace {

class Groups : public BarTest {
protected:
    /// Waits for the application's group button with this number on its badge; its frame, empty when it does not come.
    Box groupOf(const std::string& application, const std::string& count) {
        const auto found = [&] { return bar->group(application) && bar->panelItem(count); };
        return desktop.waitUntil(found) ? bar->group(application)->frame : Box{};
    }
};

TEST_F(Groups, ListTheirWindowsInAPopoverOrActLikeTheButtonOfTheOnlyOne) {
    auto alpha = runPuppet("Alpha", {"a1", "a2", "a3"});
    auto beta = runPuppet("Beta", {"alone"});
    const auto second = awaitWindow("a2"), third = awaitWindow("a3"), alone = awaitWindow("alone");
    ASSERT_TRUE(becomesActive(alone));
    startBar({.defaults = R"({"groupingMode": "always"})"});
    const Box many = groupOf("Alpha", "3");
    EXPECT_FALSE(bar->panelItem("1")) << "one window needs no number";
    ASSERT_TRUE(bar->group("Beta"));
    const Spot single = bar->group("Beta")->frame.center();
    pointer.click(single);
    EXPECT_TRUE(becomesMinimized(alone));
    EXPECT_TRUE(bar->popups().empty());
    pointer.click(single);
    EXPECT_TRUE(becomesActive(alone));

    desktop.activate(third);
    ASSERT_TRUE(becomesActive(third));
    pointer.click(many.center());
    for (const char* title : {"a1", "a2", "a3"}) EXPECT_TRUE(showsInPopup(title));
    EXPECT_LE(popupItem("a3").bottom(), panelBox().y) << "the popover covers the bar";
    EXPECT_EQ(desktop.activeWindow(), third) << "opening it took the focus";
    pick("a2");
    EXPECT_TRUE(becomesActive(second));

    if (!bar->popupItem("a1")) pointer.click(many.center());
    ASSERT_TRUE(showsInPopup("a1"));
    pointer.click({400, 40});  // the bare desktop
    EXPECT_TRUE(eventually([&] { return !bar->popupItem("a1"); })) << "a press elsewhere closes it";
}

class Menus : public BarTest {};

TEST_F(Menus, CloseWindowsAndQuitPrograms) {
    auto puppet = runPuppet("Puppet", {"Shut me", "Keep me"});
    auto stubborn = runPuppet("Stubborn", {"Last one"});
    startBar();
    ASSERT_TRUE(showsButton("Shut me"));
    pointer.rightClick(bar->button("Shut me")->frame.center());
    for (const char* entry : {"Close Window", "Quit Puppet", "Pin App to Morvel"}) EXPECT_TRUE(showsInPopup(entry));
    EXPECT_FALSE(bar->popupItem("Move to Display")) << "there is only one";
    EXPECT_TRUE(desktop.box().contains(bar->popups().at(0).box));
    pointer.key(kKeyEscape);
    EXPECT_TRUE(closesPopups());

    pickFromMenu("Shut me", "Close Window");
    EXPECT_TRUE(showsButtons({"Keep me", "Last one"}));
    EXPECT_TRUE(puppet.isRunning());
    pickFromMenu("Keep me", "Quit Puppet");
    EXPECT_TRUE(puppet.waitForExit()) << "it lives on without windows when asked politely, and is then forced";
    EXPECT_TRUE(showsButtons({"Last one"}));

    desktop.close(awaitWindow("Last one"));
    pickFromMenu("no window open", "Force Quit Stubborn");
    EXPECT_TRUE(stubborn.waitForExit());
    EXPECT_TRUE(showsButtons({}));
}

TEST_F(Menus, WorkByKeyboardAndLeaveInputFree) {
    const auto window = client.openAndWait({.title = "Under the pointer"});
    startBar();
    ASSERT_TRUE(showsButton("Under the pointer"));
    const Spot button = bar->button("Under the pointer")->frame.center();
    pointer.rightClick(button);
    ASSERT_TRUE(showsInPopup("Close Window"));
    pointer.click({900, 600});
    EXPECT_TRUE(closesPopups()) << "something else was pressed";
    client.wasClicked();
    pointer.click(desktop.windowBox(window).center());
    EXPECT_TRUE(eventually([&] { return client.wasClicked(); })) << "the bar still holds the pointer";

    pointer.rightClick(button);
    ASSERT_TRUE(showsInPopup("Close Window"));
    pointer.key(kKeyDown);
    pointer.key(kKeyReturn);
    EXPECT_TRUE(eventually([&] { return !desktop.connection().boxOf(window); })) << "it is closed";
}

}  // namespace
}  // namespace morvel::e2e
