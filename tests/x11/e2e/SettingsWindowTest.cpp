// The settings window on a real X server: opened from the bar's menu, driven by keyboard and pointer.
#include <fstream>

#include "BarTest.h"

namespace morvel::e2e {
namespace {

constexpr uint32_t kKeySpace = 0x20;

class Settings : public BarTest {
protected:
    /// Puts the keyboard on the first control that the search for this finds, in a window that has just been opened.
    void goTo(std::string_view text) {
        constexpr int kTabsToSearch = 5;  // one per page, from the first
        for (int i = 0; i < kTabsToSearch; ++i) pointer.key(kKeyTab);
        pointer.type(text);
        desktop.runFor(500ms);  // the window begins to search a little after the last letter
        pointer.key(kKeyTab);
    }
    testing::AssertionResult isStored(const std::string& part) {
        const auto holds = [&] {
            std::ifstream file(bar->defaultsFile());
            std::string text{std::istreambuf_iterator<char>(file), {}};
            std::erase_if(text, [](char c) { return c == ' ' || c == '\n'; });
            return text.find(part) != std::string::npos;
        };
        return eventually(holds) << ": " << part << " in the file";
    }
};

TEST_F(Settings, OpenFromTheMenuAndAreUsedByKeyboardAndPointer) {
    const auto icons = world.server.home() / ".local/share/icons/hicolor/scalable/apps";
    std::filesystem::create_directories(icons);
    std::ofstream(icons / "morvel.svg") << R"(<svg xmlns="http://www.w3.org/2000/svg" width="48" height="48"/>)";
    startBar();
    EXPECT_FALSE(isLoaded("libgtk-3")) << "nobody has asked for it";
    const xcb_window_t window = openSettings();
    EXPECT_TRUE(isLoaded("morvel-forms"));
    const Box box = desktop.windowBox(window);
    EXPECT_EQ(box.width, 720);
    EXPECT_EQ(box.height, 560);
    EXPECT_TRUE(client.connection().bytes(window, "_NET_WM_ICON")) << "the application's, for window lists";
    goTo("borders");
    pointer.key(kKeySpace);
    EXPECT_TRUE(isStored(R"("showButtonBorders":false)"));
    // It is the only one left on its page, in the first row below the heading.
    pointer.click({box.right() - 50, box.y + 126});
    EXPECT_TRUE(isStored(R"("showButtonBorders":true)"));

    desktop.close(window);
    EXPECT_TRUE(eventually([&] { return !desktop.windowTitled(kSettings); }));
    openSettings();
    goTo("bar height");
    pointer.key(kKeyRight);
    EXPECT_TRUE(eventually([&] { return panelBox().height == 45; })) << "the bar follows at once";
    quitBar();  // ends as ever, with the window open
}

TEST_F(Settings, TheThemeIsTheDesktopsOrTheirOwn) {
    using namespace std::string_literals;
    const auto tellTheme = [&](const std::string& lengthAndName) {
        tellSettings("\0\0\0\0\1\0\0\0\1\0\0\0\1\0\x0d\0Net/ThemeName\0\0\0\0\0\0\0"s + lengthAndName);
    };
    tellTheme("\x0c\0\0\0Adwaita-dark"s);
    const auto isBright = [&](const Box& box) { return world.shoot().average(box).green > 128; };
    startBar({.defaults = R"({"theme": "system"})"});
    EXPECT_TRUE(eventually([&] { return !isBright(panelBox()); }));
    tellTheme("\x07\0\0\0Adwaita\0"s);
    EXPECT_TRUE(eventually([&] { return isBright(panelBox()); })) << "followed at once";
    tellTheme("\x0c\0\0\0Adwaita-dark"s);
    EXPECT_TRUE(eventually([&] { return !isBright(panelBox()); }));
    quitBar();
    startBar({.defaults = R"({"theme": "light"})"});
    EXPECT_TRUE(eventually([&] { return isBright(panelBox()); }));
    const xcb_window_t window = openSettings();
    EXPECT_TRUE(eventually([&] { return isBright(desktop.windowBox(window)); }));
}

}  // namespace
}  // namespace morvel::e2e
