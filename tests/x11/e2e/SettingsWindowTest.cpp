// The settings window on a real X server: opened from the bar's menu, driven by keyboard and pointer.
#include <fstream>
#include <string_view>

#include "BarTest.h"

namespace morvel::e2e {
namespace {

using namespace std::chrono_literals;

constexpr uint32_t kKeyTab = 0xff09;
constexpr uint32_t kKeySpace = 0x20;
constexpr const char* kTitle = "Morvel Settings";

class Settings : public BarTest {
protected:
    /// By the menu of the bar's empty end. The window, once it has the focus; none when it does not come.
    xcb_window_t open() {
        const Box panel = panelBox();
        pointer.rightClick({panel.right() - 40, panel.center().y});
        pointer.click(popupItem("Morvel Settings…").center());
        std::optional<xcb_window_t> window;
        EXPECT_TRUE(eventually([&] { return (window = desktop.windowTitled(kTitle)).has_value(); }));
        EXPECT_TRUE(eventually([&] { return desktop.activeWindow() == window; }));
        return window.value_or(XCB_NONE);
    }
    /// The window begins to search a little after the last letter.
    void search(std::string_view text) {
        for (const char letter : text) pointer.key(static_cast<uint32_t>(letter));
        desktop.runFor(500ms);
    }
    void tab(int times) {
        for (int i = 0; i < times; ++i) pointer.key(kKeyTab);
    }
    bool isLoaded(const std::string& library) {
        std::ifstream maps("/proc/" + std::to_string(bar->program().pid()) + "/maps");
        for (std::string line; std::getline(maps, line);)
            if (line.find(library) != std::string::npos) return true;
        return false;
    }
    bool isStored(const std::string& part) {
        std::ifstream file(bar->defaultsFile());
        std::string text{std::istreambuf_iterator<char>(file), {}};
        std::erase_if(text, [](char c) { return c == ' ' || c == '\n'; });
        return text.find(part) != std::string::npos;
    }

    static constexpr int kTabsToSearch = 5;  // one per page, from the first
};

TEST_F(Settings, OpenFromTheMenuAndAreUsedByKeyboardAndPointer) {
    client.openAndWait({.title = "Window"});
    startBar();
    ASSERT_TRUE(showsButton("Window"));
    EXPECT_FALSE(isLoaded("libgtk-3")) << "nobody has asked for it";
    const xcb_window_t window = open();
    ASSERT_NE(window, XCB_NONE);
    EXPECT_TRUE(isLoaded("morvel-forms"));
    const Box box = desktop.windowBox(window);
    EXPECT_EQ(box.width, 720);
    EXPECT_EQ(box.height, 560);

    tab(kTabsToSearch);
    search("bar height");
    tab(1);
    pointer.key(kKeyRight);
    pointer.key(kKeyRight);
    EXPECT_TRUE(eventually([&] { return panelBox().height == 46; })) << "the bar follows at once";
    EXPECT_TRUE(eventually([&] { return isStored(R"("barHeight":46)"); }));

    desktop.close(window);
    EXPECT_TRUE(eventually([&] { return !desktop.windowTitled(kTitle); }));
    ASSERT_NE(open(), XCB_NONE) << "closing it has hidden it";
    pointer.key(kKeyEscape);
    tab(0);
    EXPECT_TRUE(bar->program().isRunning());
    EXPECT_EQ(bar->log().find("CRITICAL"), std::string::npos) << bar->log();
}

TEST_F(Settings, HaveTheApplicationsIconInWindowLists) {
    const auto icons = world.server.home() / ".local/share/icons/hicolor/scalable/apps";
    std::filesystem::create_directories(icons);
    std::ofstream(icons / "morvel.svg") << R"(<svg xmlns="http://www.w3.org/2000/svg" width="48" height="48"/>)";
    startBar();
    const xcb_window_t window = open();
    EXPECT_TRUE(eventually([&] { return client.connection().bytes(window, "_NET_WM_ICON").has_value(); }));
}

TEST_F(Settings, ASwitchIsFoundAndTurned) {
    startBar();
    const xcb_window_t window = open();
    ASSERT_NE(window, XCB_NONE);
    tab(kTabsToSearch);
    search("borders");
    tab(1);
    pointer.key(kKeySpace);
    EXPECT_TRUE(eventually([&] { return isStored(R"("showButtonBorders":false)"); }));
    // It is the only one left on its page, in the first row below the heading.
    const Box box = desktop.windowBox(window);
    pointer.click({box.right() - 50, box.y + 126});
    EXPECT_TRUE(eventually([&] { return isStored(R"("showButtonBorders":true)"); }));
}

TEST_F(Settings, RoomThatIsNoLongerReservedIsGivenBack) {
    startBar();
    const auto window = client.openAndWait({.title = "Tall", .box = {20, 300, 300, 460}});
    const int barTop = panelBox().y;
    const auto lowerEnd = [&] { return desktop.windowBox(window).bottom(); };
    const Box before = desktop.windowBox(window);
    ASSERT_GT(lowerEnd(), barTop);
    ASSERT_TRUE(eventually([&] { return lowerEnd() <= barTop; }));
    ASSERT_NE(open(), XCB_NONE);
    tab(kTabsToSearch);
    search("reserve space");
    tab(1);
    pointer.key(kKeySpace);
    EXPECT_TRUE(eventually([&] { return isStored(R"("clampWindows":false)"); }));
    EXPECT_TRUE(eventually([&] { return desktop.windowBox(window) == before; })) << lowerEnd();
}

TEST_F(Settings, TakeEffectWhereNothingCanBeSaved) {
    startBar({.environment = {{"HOME", "/proc/none"}, {"XDG_CONFIG_HOME", "/proc/none"}}});
    ASSERT_NE(open(), XCB_NONE);
    tab(kTabsToSearch);
    search("bar height");
    tab(1);
    for (int height = 45; height <= 47; ++height) {
        pointer.key(kKeyRight);
        EXPECT_TRUE(eventually([&] { return panelBox().height == height; }));
    }
    const std::string log = bar->log();
    const size_t complaint = log.find("cannot write");
    EXPECT_NE(complaint, std::string::npos);
    EXPECT_EQ(log.find("cannot write", complaint + 1), std::string::npos) << "once is enough: " << log;
}

TEST_F(Settings, TheThemeIsTheDesktopsOrTheirOwn) {
    using namespace std::string_literals;
    auto& connection = client.connection();
    const xcb_window_t owner = client.open({.title = "settings"});
    const auto publish = [&](const std::string& lengthAndName) {
        const std::string settings = "\0\0\0\0\1\0\0\0\1\0\0\0\1\0\x0d\0Net/ThemeName\0\0\0\0\0\0\0"s + lengthAndName;
        connection.setBytes(owner, "_XSETTINGS_SETTINGS", "_XSETTINGS_SETTINGS", settings);
        connection.sync();
    };
    const std::string kDark = "\x0c\0\0\0Adwaita-dark"s, kLight = "\x07\0\0\0Adwaita\0"s;
    publish(kDark);
    xcb_set_selection_owner(connection, owner, connection.atom("_XSETTINGS_S0"), XCB_CURRENT_TIME);
    connection.sync();
    const auto isBright = [&](const Box& box) { return world.shoot().average(box).green > 128; };
    startBar({.defaults = R"({"theme": "system"})"});
    EXPECT_TRUE(eventually([&] { return !isBright(panelBox()); }));
    publish(kLight);
    EXPECT_TRUE(eventually([&] { return isBright(panelBox()); })) << "followed at once";
    publish(kDark);
    EXPECT_TRUE(eventually([&] { return !isBright(panelBox()); }));
    bar->program().signal(SIGTERM);
    EXPECT_EQ(bar->program().waitForExit(), 0);
    startBar({.defaults = R"({"theme": "light"})"});
    EXPECT_TRUE(eventually([&] { return isBright(panelBox()); }));
    const xcb_window_t window = open();
    ASSERT_NE(window, XCB_NONE);
    EXPECT_TRUE(eventually([&] { return isBright(desktop.windowBox(window)); }));
}

TEST_F(Settings, AreNotNeededByABarWhoseServerGoesAway) {
    startBar();
    ASSERT_NE(open(), XCB_NONE);
    bar->program().signal(SIGTERM);
    EXPECT_EQ(bar->program().waitForExit(), 0) << "ends as ever, with the window open";
    bar.reset();
}

}  // namespace
}  // namespace morvel::e2e
