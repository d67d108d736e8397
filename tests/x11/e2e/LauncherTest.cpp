// The launcher with a real keyboard: what is typed into it, and whose the keyboard is.
#include "BarTest.h"

namespace morvel::e2e {
namespace {

constexpr int kWheelDown = 5;
constexpr const char* kPlaceholder = "Search apps…";

class Launcher : public BarTest {
protected:
    void startWithApplications(const std::vector<std::string>& names = {"Quill", "Quarry", "Zebra Quiz"}) {
        for (const auto& name : names) install(name, std::string(MORVEL_PUPPET) + " " + name + " Opened");
        startBar({.environment = {{"XDG_DATA_DIRS", "/none"}}});  // or what this machine has would stand before them
        ASSERT_TRUE(showsOnPanel("Apps"));
    }
    Spot startButton() { return bar->panelItem("Apps").value_or(BarView{}).frame.center(); }
    /// The launcher is open once its field is there.
    void openLauncher() {
        pointer.click(startButton());
        ASSERT_TRUE(showsInPopup(kPlaceholder)) << "no search field";
        ASSERT_TRUE(eventually([&] { return isKeyboardTaken(); }));
    }
    testing::AssertionResult opens(const std::string& className) {
        const auto isOpen = [&] {
            const auto window = desktop.windowTitled("Opened");
            return window && desktop.connection().bytes(*window, "WM_CLASS").value_or("").starts_with(className);
        };
        return eventually(isOpen) << ": the program is started";
    }
    /// Whether a grab of ours is refused because another program holds the keyboard.
    bool isKeyboardTaken() {
        auto& connection = client.connection();
        const auto cookie = xcb_grab_keyboard(connection, 0, connection.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                              XCB_GRAB_MODE_ASYNC);
        const Owned<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(connection, cookie, nullptr));
        const bool isTaken = reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
        if (!isTaken) xcb_ungrab_keyboard(connection, XCB_CURRENT_TIME);
        connection.sync();
        return isTaken;
    }
};

TEST_F(Launcher, FiltersWhileOneTypesAndStartsWhatReturnChooses) {
    startWithApplications();
    const auto window = client.openAndWait({.title = "In front"});
    desktop.activate(window);
    ASSERT_TRUE(becomesActive(window));
    openLauncher();
    EXPECT_TRUE(showsInPopup("Quill"));
    EXPECT_LE(popupItem(kPlaceholder).bottom(), panelBox().y) << "it covers the bar";
    EXPECT_EQ(desktop.activeWindow(), window) << "the application in front stays in front";

    pointer.type("qui");
    EXPECT_TRUE(showsInPopup("qui"));
    EXPECT_TRUE(eventually([&] { return !bar->popupItem("Quarry"); }));
    EXPECT_TRUE(bar->popupItem("Zebra Quiz").has_value());
    pointer.key(kKeyDown);
    pointer.key(kKeyReturn);
    EXPECT_TRUE(closesPopups());
    EXPECT_TRUE(opens("Zebra"));
    EXPECT_TRUE(eventually([&] { return !isKeyboardTaken(); })) << "the keyboard is given back";

    openLauncher();
    EXPECT_TRUE(showsInPopup("Quarry")) << "nothing of what was typed is left";
    pointer.key(kKeyEscape);
    EXPECT_TRUE(closesPopups());
}

TEST_F(Launcher, IsEditedAsAnyField) {
    startWithApplications();
    openLauncher();
    pointer.type("one two");
    pointer.key(kKeyLeft, kKeyShift);
    pointer.type("x");
    EXPECT_TRUE(showsInPopup("one twx")) << "typing replaces what is selected";
    pointer.key(kKeyBackSpace, kKeyControl);
    EXPECT_TRUE(showsInPopup("one ")) << "a word back";
    pointer.key(kKeyHome);
    pointer.type("2");
    EXPECT_TRUE(showsInPopup("2one "));
    pointer.key('a', kKeyControl);
    pointer.type("new");
    EXPECT_TRUE(showsInPopup("new"));
    // A double click selects the word under the pointer.
    const Box field = popupItem("new");
    for (int i = 0; i < 2; ++i) pointer.click({field.x + 14, field.center().y});
    pointer.key(kKeyBackSpace);
    EXPECT_TRUE(showsInPopup(kPlaceholder));
    client.copy(client.open({.title = "Copied from"}), "Zebra\nQuiz");
    pointer.key('v', kKeyControl);
    EXPECT_TRUE(showsInPopup("Zebra Quiz"));
    EXPECT_TRUE(eventually([&] { return !bar->popupItem("Quill"); }));
}

TEST_F(Launcher, ScrollsAndOpensAndClosesWithClicks) {
    std::vector<std::string> names;
    for (int i = 10; i < 60; ++i) names.push_back("Tool" + std::to_string(i));
    startWithApplications(names);
    const auto window = client.openAndWait({.title = "Under it", .box = {500, 100, 300, 200}});
    openLauncher();
    pointer.click(desktop.windowBox(window).center());
    EXPECT_TRUE(closesPopups());
    EXPECT_TRUE(eventually([&] { return client.wasClicked(); })) << "the press was taken from the window";
    openLauncher();
    pointer.click(startButton());
    EXPECT_TRUE(closesPopups());
    openLauncher();
    clickButton("Under it");
    EXPECT_TRUE(closesPopups()) << "a press on another button of the bar";
    EXPECT_TRUE(eventually([&] { return !isKeyboardTaken(); }));

    openLauncher();
    EXPECT_FALSE(bar->popupItem("Tool59"));
    const Spot first = popupItem("Tool10").center();
    for (int i = 0; i < 60; ++i) pointer.click(first, kWheelDown);
    const Box last = popupItem("Tool59");
    ASSERT_FALSE(last.isEmpty());
    EXPECT_TRUE(bar->popups().at(0).box.contains(last)) << "scrolled to its end";
    pointer.click(last.center());
    EXPECT_TRUE(opens("Tool59"));
    EXPECT_TRUE(closesPopups());
}

}  // namespace
}  // namespace morvel::e2e
