// The launcher with a real keyboard: what is typed into it, and whose the keyboard is.
#include <filesystem>
#include <fstream>

#include "BarTest.h"

namespace morvel::e2e {
namespace {

constexpr const char* kPlaceholder = "Search apps…";

class Launcher : public BarTest {
protected:
    void install(const std::string& name, const std::string& command) {
        const auto folder = world.server.home() / ".local/share/applications";
        std::filesystem::create_directories(folder);
        std::ofstream(folder / (name + ".desktop"))
            << "[Desktop Entry]\nType=Application\nName=" << name << "\nExec=" << command << "\n";
    }
    void startWithApplications() {
        for (const char* name : {"Quill", "Quarry", "Zebra Quiz"})
            install(name, std::string(MORVEL_PUPPET) + " " + name + " Opened");
        startBar();
    }
    Box startButton() {
        const auto shown = [&] { return bar->panelItem("Apps").has_value(); };
        return desktop.waitUntil(shown) ? bar->panelItem("Apps")->frame : Box{};
    }
    /// The launcher is open once its field is there.
    void openLauncher() {
        pointer.click(startButton().center());
        ASSERT_FALSE(popupItem(kPlaceholder).isEmpty()) << "no search field";
        ASSERT_TRUE(eventually([&] { return isKeyboardTaken(); }));
    }
    /// Whether a grab of ours is refused because another program holds the keyboard.
    bool isKeyboardTaken() {
        auto& connection = client.connection();
        const Owned<xcb_grab_keyboard_reply_t> reply(
            xcb_grab_keyboard_reply(connection,
                                    xcb_grab_keyboard(connection, 0, connection.root(), XCB_CURRENT_TIME,
                                                      XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                    nullptr));
        const bool isTaken = reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
        if (!isTaken) xcb_ungrab_keyboard(connection, XCB_CURRENT_TIME);
        connection.sync();
        return isTaken;
    }
    testing::AssertionResult fieldShows(const std::string& text) {
        return eventually([&] { return bar->popupItem(text).has_value(); }) << ": the field shows " << text;
    }
    testing::AssertionResult isClosed() {
        return eventually([&] { return bar->popups().empty(); }) << ": the launcher closes";
    }
};

TEST_F(Launcher, FiltersWhileOneTypesAndStartsWhatReturnChooses) {
    startWithApplications();
    const auto window = client.openAndWait({.title = "In front"});
    desktop.activate(window);
    ASSERT_TRUE(becomesActive(window));
    openLauncher();
    EXPECT_FALSE(popupItem("Quill").isEmpty());
    EXPECT_LE(popupItem(kPlaceholder).bottom(), panelBox().y) << "it covers the bar";
    EXPECT_EQ(desktop.activeWindow(), window) << "the application in front stays in front";

    pointer.type("qui");
    EXPECT_TRUE(fieldShows("qui"));
    EXPECT_TRUE(eventually([&] { return !bar->popupItem("Quarry"); }));
    EXPECT_TRUE(bar->popupItem("Zebra Quiz").has_value());
    pointer.key(kKeyDown);
    pointer.key(kKeyReturn);
    EXPECT_TRUE(isClosed());
    EXPECT_TRUE(eventually([&] { return desktop.windowTitled("Opened").has_value(); }));
    EXPECT_EQ(desktop.connection().bytes(desktop.windowTitled("Opened").value(), "WM_CLASS").value_or("").substr(0, 5),
              "Zebra");
    EXPECT_TRUE(eventually([&] { return !isKeyboardTaken(); })) << "the keyboard is given back";

    openLauncher();
    EXPECT_FALSE(popupItem("Quarry").isEmpty()) << "nothing of what was typed is left";
    pointer.key(kKeyEscape);
    EXPECT_TRUE(isClosed());
}

TEST_F(Launcher, IsEditedAsAnyField) {
    startWithApplications();
    openLauncher();
    pointer.type("one two");
    pointer.key(kKeyLeft, kKeyShift);
    pointer.type("x");
    EXPECT_TRUE(fieldShows("one twx")) << "typing replaces what is selected";
    pointer.key(kKeyBackSpace, kKeyControl);
    EXPECT_TRUE(fieldShows("one ")) << "a word back";
    pointer.key(kKeyHome);
    pointer.type("2");
    EXPECT_TRUE(fieldShows("2one "));
    pointer.key('a', kKeyControl);
    pointer.type("new");
    EXPECT_TRUE(fieldShows("new"));
    // A double click selects the word under the pointer.
    const Box field = popupItem("new");
    const Spot word{field.x + 14, field.center().y};
    pointer.click(word);
    pointer.click(word);
    pointer.key(kKeyBackSpace);
    EXPECT_TRUE(fieldShows(kPlaceholder));
}

TEST_F(Launcher, ClosesAtAPressElsewhereAndAtASecondClick) {
    startWithApplications();
    const auto window = client.openAndWait({.title = "Under it", .box = {500, 100, 300, 200}});
    openLauncher();
    pointer.click(desktop.windowBox(window).center());
    EXPECT_TRUE(isClosed());
    EXPECT_TRUE(eventually([&] { return client.wasClicked(); })) << "the press was taken from the window";
    openLauncher();
    pointer.click(startButton().center());
    EXPECT_TRUE(isClosed());
    openLauncher();
    clickButton("Under it");
    EXPECT_TRUE(isClosed()) << "a press on another button of the bar";
    EXPECT_TRUE(eventually([&] { return !isKeyboardTaken(); }));
}

TEST_F(Launcher, ScrollsAndOpensWithAClick) {
    for (int i = 10; i < 60; ++i)
        install("Tool " + std::to_string(i), std::string(MORVEL_PUPPET) + " Tool Window" + std::to_string(i));
    startBar();
    openLauncher();
    EXPECT_FALSE(bar->popupItem("Tool 59"));
    const Box list = popupItem("Tool 10");
    pointer.moveTo(list.center());
    for (int i = 0; i < 60; ++i) {
        pointer.press(5);
        pointer.release(5);
    }
    const Box last = popupItem("Tool 59");
    ASSERT_FALSE(last.isEmpty());
    EXPECT_TRUE(bar->popups().at(0).box.contains(last)) << "scrolled to its end";
    pointer.click(last.center());
    EXPECT_TRUE(eventually([&] { return desktop.windowTitled("Window59").has_value(); }));
    EXPECT_TRUE(isClosed());
}

TEST_F(Launcher, PastesWhatIsCopiedElsewhere) {
    startWithApplications();
    openLauncher();
    client.copy(client.open({.title = "Copied from"}), "Zebra\nQuiz");
    pointer.key('v', kKeyControl);
    EXPECT_TRUE(fieldShows("Zebra Quiz"));
    EXPECT_TRUE(eventually([&] { return !bar->popupItem("Quill"); }));
}

}  // namespace
}  // namespace morvel::e2e
