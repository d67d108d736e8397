// Windows keep clear of the bar: maximized ones by the window manager, the others by the bar itself.
#include <filesystem>
#include <fstream>

#include "BarTest.h"

namespace morvel::e2e {
namespace {

constexpr int kBarTop = 800 - 44;
constexpr Box kTall{100, 100, 400, 690};

class Clamping : public BarTest {
protected:
    /// The lowest row that the window covers, its frame included.
    int lowerEnd(xcb_window_t window) {
        const auto frame = desktop.connection().cardinals(window, "_NET_FRAME_EXTENTS");
        return desktop.windowBox(window).bottom() + (frame.size() == 4 ? static_cast<int>(frame[3]) : 0);
    }
    /// The folder of a person who has this program installed.
    std::string dataHomeWith(const std::string& name, const std::string& className) {
        const auto folder = world.server.configFolder() / "data";
        std::filesystem::create_directories(folder / "applications");
        std::ofstream(folder / "applications" / (name + ".desktop"))
            << "[Desktop Entry]\nType=Application\nName=" << name << "\nExec=true\nStartupWMClass=" << className
            << "\n";
        return folder;
    }
};

TEST_F(Clamping, AMaximizedWindowEndsAtTheBarAndAFreeOneIsShrunk) {
    const auto maximized = client.openAndWait({.title = "Maximized"});
    desktop.setMaximized(maximized, true);
    const auto free = client.openAndWait({.title = "Free", .box = kTall});
    const auto clear = client.openAndWait({.title = "Clear", .box = {600, 100, 300, 300}});
    const Box untouched = desktop.windowBox(clear), before = desktop.windowBox(free);
    startBar();
    EXPECT_TRUE(eventually([&] { return lowerEnd(maximized) == kBarTop; }));
    EXPECT_TRUE(eventually([&] { return lowerEnd(free) == kBarTop; })) << lowerEnd(free);
    EXPECT_EQ(desktop.windowBox(free).y, before.y) << "the upper end stays";
    EXPECT_EQ(desktop.windowBox(clear), untouched);

    const auto late = client.openAndWait({.title = "Late", .box = kTall});
    EXPECT_GT(lowerEnd(late), kBarTop) << "its program may still be placing it";
    EXPECT_TRUE(eventually([&] { return lowerEnd(late) == kBarTop; }));
    desktop.place(late, {300, 300, 300, 490});
    EXPECT_TRUE(eventually([&] { return lowerEnd(late) == kBarTop && desktop.windowBox(late).x >= 300; }));
}

TEST_F(Clamping, AtTheTopEdgeTheTitleBarComesDown) {
    startBar({.defaults = R"({"barEdge": "top", "compactAtTop": false})"});
    const auto window = client.openAndWait({.title = "High", .box = {100, 10, 400, 500}});
    desktop.place(window, {100, 30, 400, 500});
    EXPECT_TRUE(eventually([&] {
        const auto frame = desktop.connection().cardinals(window, "_NET_FRAME_EXTENTS");
        return frame.size() == 4 && desktop.windowBox(window).y - static_cast<int>(frame[2]) >= 44;
    })) << desktop.windowBox(window).y;  // where its lower end comes to be depends on who is first: we or the manager
}

TEST_F(Clamping, AnExemptProgramKeepsItsWindow) {
    const auto window = client.openAndWait({.title = "Exempt", .box = kTall});
    const Program puppet = runPuppet("other", {"Other"});
    const auto other = desktop.windowTitled("Other").value();
    desktop.place(other, kTall);
    const Box before = desktop.windowBox(window);
    startBar({.defaults = R"({"clampingBlacklist": ["testclient"]})",
              .environment = {{"XDG_DATA_HOME", dataHomeWith("testclient", "TestClient")}}});
    EXPECT_TRUE(eventually([&] { return lowerEnd(other) == kBarTop; }));
    EXPECT_EQ(desktop.windowBox(window), before);
}

TEST_F(Clamping, AProgramThatFightsBackIsLeftInPeace) {
    startBar();
    const auto window = client.openAndWait({.title = "Fighter", .box = kTall});
    int fights = 0;
    for (int i = 0; i < 60; ++i) {
        desktop.runFor(std::chrono::milliseconds(50));
        if (desktop.windowBox(window).height >= kTall.height) continue;
        ++fights;
        desktop.place(window, kTall);
    }
    EXPECT_GE(fights, 1);
    EXPECT_LE(fights, 6);
    EXPECT_EQ(desktop.windowBox(window).height, kTall.height) << "it has its way";
}

}  // namespace
}  // namespace morvel::e2e
