// Windows keep clear of the bar: maximized ones by the window manager, the others by the bar itself.
#include "BarTest.h"

namespace morvel::e2e {
namespace {

constexpr int kBarTop = 800 - 44;
constexpr Box kTall{100, 100, 400, 690};

class Clamping : public BarTest {
protected:
    /// What the window covers, its decorations included.
    Box frameOf(xcb_window_t window) {
        const auto extents = desktop.connection().cardinals(window, "_NET_FRAME_EXTENTS");
        const Box box = desktop.windowBox(window);
        if (extents.size() != 4) return box;
        const int top = static_cast<int>(extents[2]), bottom = static_cast<int>(extents[3]);
        return {box.x, box.y - top, box.width, box.height + top + bottom};
    }
    testing::AssertionResult endsAtTheBar(xcb_window_t window) {
        return eventually([&] { return frameOf(window).bottom() == kBarTop; }) << ": it is " << frameOf(window);
    }
};

TEST_F(Clamping, WindowsEndAtTheBarUnlessTheyAreExempt) {
    const auto maximized = client.openAndWait({.title = "Maximized"});
    desktop.setMaximized(maximized, true);
    const auto free = client.openAndWait({.title = "Free", .box = kTall});
    const auto clear = client.openAndWait({.title = "Clear", .box = {600, 100, 300, 300}});
    const Program puppet = runPuppet("Exempt", {"Exempt"});
    install("Exempt", "true");
    const auto exempt = awaitWindow("Exempt");
    desktop.place(exempt, kTall);
    ASSERT_TRUE(eventually([&] { return frameOf(exempt).bottom() > kBarTop; }));
    const Box untouched = desktop.windowBox(clear), before = desktop.windowBox(free);
    const Box asPlaced = desktop.windowBox(exempt);
    startBar({.defaults = R"({"clampingBlacklist": ["Exempt"]})"});
    EXPECT_TRUE(endsAtTheBar(maximized));
    EXPECT_TRUE(endsAtTheBar(free));
    EXPECT_EQ(desktop.windowBox(free).y, before.y) << "the upper end stays";

    const auto late = client.openAndWait({.title = "Late", .box = kTall});
    EXPECT_GT(frameOf(late).bottom(), kBarTop) << "its program may still be placing it";
    EXPECT_TRUE(endsAtTheBar(late));
    desktop.place(late, {300, 300, 300, 490});
    EXPECT_TRUE(eventually([&] { return desktop.windowBox(late).x >= 300; }));
    EXPECT_TRUE(endsAtTheBar(late));
    EXPECT_EQ(desktop.windowBox(clear), untouched);
    EXPECT_EQ(desktop.windowBox(exempt), asPlaced);
}

TEST_F(Clamping, AtTheTopEdgeTheTitleBarComesDown) {
    startBar({.defaults = R"({"barEdge": "top", "compactAtTop": false})"});
    const auto window = client.openAndWait({.title = "High", .box = {100, 10, 400, 500}});
    desktop.place(window, {100, 30, 400, 500});
    // Where its lower end comes to be depends on who is first: we or the manager.
    EXPECT_TRUE(eventually([&] { return frameOf(window).y >= 44; })) << frameOf(window);
}

}  // namespace
}  // namespace morvel::e2e
