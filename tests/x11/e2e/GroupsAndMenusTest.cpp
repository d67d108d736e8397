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

TEST_F(Groups, FormWhenCrowdedAndDissolveWhenThereIsRoom) {
    startBar();
    auto alpha = runPuppet("Alpha", {"a1", "a2", "a3", "a4"});
    for (const char* title : {"a1", "a2", "a3", "a4"}) EXPECT_TRUE(showsButton(title)) << "there is room for four";
    auto beta = runPuppet("Beta", {"b1", "b2", "b3", "b4", "b5", "b6"});
    EXPECT_FALSE(groupOf("Alpha", "4").isEmpty());
    EXPECT_FALSE(groupOf("Beta", "6").isEmpty());
    EXPECT_TRUE(eventually([&] { return !bar->button("a1") && !bar->button("b6"); }));
    beta.kill();
    EXPECT_TRUE(showsButton("a1"));
    EXPECT_TRUE(eventually([&] { return !bar->panelItem("4"); }));
}

TEST_F(Groups, ListTheirWindowsInAPopover) {
    auto alpha = runPuppet("Alpha", {"a1", "a2", "a3"});
    startBar({.defaults = R"({"groupingMode": "always"})"});
    const auto second = desktop.windowTitled("a2").value();
    const auto third = desktop.windowTitled("a3").value();
    desktop.activate(third);
    ASSERT_TRUE(becomesActive(third));

    pointer.click(groupOf("Alpha", "3").center());
    for (const char* title : {"a1", "a2", "a3"}) EXPECT_FALSE(popupItem(title).isEmpty()) << title;
    EXPECT_LE(popupItem("a3").bottom(), panelBox().y) << "the popover covers the bar";
    EXPECT_EQ(desktop.activeWindow(), third) << "opening it took the focus";
    pointer.click(popupItem("a2").center());
    EXPECT_TRUE(becomesActive(second));

    if (!bar->popupItem("a1")) pointer.click(groupOf("Alpha", "3").center());
    ASSERT_FALSE(popupItem("a1").isEmpty());
    pointer.click({400, 40});  // the bare desktop
    EXPECT_TRUE(eventually([&] { return !bar->popupItem("a1"); })) << "a press elsewhere closes it";
}

TEST_F(Groups, OfOneWindowActLikeItsButton) {
    auto alpha = runPuppet("Alpha", {"alone"});
    startBar({.defaults = R"({"groupingMode": "always"})"});
    const auto window = desktop.windowTitled("alone").value();
    ASSERT_TRUE(becomesActive(window));
    ASSERT_TRUE(eventually([&] { return bar->group("Alpha").has_value(); }));
    EXPECT_FALSE(bar->panelItem("1")) << "one window needs no number";
    const Box group = bar->group("Alpha")->frame;
    pointer.click(group.center());
    EXPECT_TRUE(becomesMinimized(window));
    EXPECT_TRUE(bar->popups().empty());
    pointer.click(group.center());
    EXPECT_TRUE(becomesActive(window));
}

class Menus : public BarTest {};

TEST_F(Menus, OfAWindowCloseItAndQuitItsProgram) {
    auto puppet = runPuppet("Puppet", {"Shut me", "Keep me"});
    startBar();
    const auto shut = desktop.windowTitled("Shut me").value();
    ASSERT_TRUE(showsButton("Shut me"));
    pointer.rightClick(bar->button("Shut me")->frame.center());
    for (const char* entry : {"Close Window", "Quit Puppet", "Pin App to Morvel"})
        EXPECT_FALSE(popupItem(entry).isEmpty()) << entry;
    EXPECT_FALSE(bar->popupItem("Move to Display")) << "there is only one";
    EXPECT_TRUE(desktop.box().contains(bar->popups().at(0).box));
    pointer.key(kKeyEscape);
    EXPECT_TRUE(eventually([&] { return bar->popups().empty(); }));

    pickFromMenu("Shut me", "Close Window");
    EXPECT_TRUE(disappears(shut));
    EXPECT_TRUE(lacksButton("Shut me"));
    EXPECT_TRUE(puppet.isRunning());

    pickFromMenu("Keep me", "Quit Puppet");
    EXPECT_TRUE(lacksButton("Keep me"));
    EXPECT_TRUE(puppet.waitForExit()) << "it lives on without windows when asked politely, and is then forced";
    EXPECT_TRUE(lacksButton("no window open"));
}

TEST_F(Menus, CloseWhenSomethingElseIsPressedAndLeaveInputFree) {
    const auto window = client.openAndWait({.title = "Under the pointer"});
    startBar();
    ASSERT_TRUE(showsButton("Under the pointer"));
    pointer.rightClick(bar->button("Under the pointer")->frame.center());
    ASSERT_FALSE(popupItem("Close Window").isEmpty());
    pointer.click({900, 600});
    EXPECT_TRUE(eventually([&] { return bar->popups().empty(); }));
    client.wasClicked();
    pointer.click(desktop.windowBox(window).center());
    EXPECT_TRUE(eventually([&] { return client.wasClicked(); })) << "the bar still holds the pointer";
}

TEST_F(Menus, WorkByKeyboard) {
    const auto window = client.openAndWait({.title = "By key"});
    startBar();
    ASSERT_TRUE(showsButton("By key"));
    pointer.rightClick(bar->button("By key")->frame.center());
    ASSERT_FALSE(popupItem("Close Window").isEmpty());
    pointer.key(kKeyDown);
    pointer.key(kKeyReturn);
    EXPECT_TRUE(disappears(window));
}

TEST_F(Menus, ForceQuitAProgramWithoutWindows) {
    auto puppet = runPuppet("Stubborn", {"Last one"});
    startBar();
    ASSERT_TRUE(showsButton("Last one"));
    desktop.close(desktop.windowTitled("Last one").value());
    pickFromMenu("no window open", "Force Quit Stubborn");
    EXPECT_TRUE(puppet.waitForExit());
    EXPECT_TRUE(lacksButton("no window open"));
}

}  // namespace
}  // namespace morvel::e2e
