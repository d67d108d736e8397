// Pinned items on a real desktop: pinned by menu and by drop, kept over a restart, moved by hand, listed when crowded.
#include <map>

#include "BarTest.h"
#include "harness/DragPeer.h"

namespace morvel::e2e {
namespace {

constexpr const char* kShowMore = "Show more pinned items";

class Pinned : public BarTest {
protected:
    /// An application that the system knows, with a window.
    Program runInstalled(const std::string& name, const std::string& windowTitle) {
        install(name, std::string(MORVEL_PUPPET) + " " + name + " launched", "Icon=folder\n");
        return runPuppet(name, {windowTitle});
    }
    /// As a file manager does it: at the place in the bar, with all that is asked before.
    void dropFiles(const std::vector<std::string>& paths, Spot spot) {
        const xcb_window_t panel = bar->panels().at(0).id;
        DragPeer peer(world.server, desktop);
        std::string list;
        for (const std::string& path : paths) list += "file://" + path + "\r\n";
        peer.offer("text/uri-list", list);
        peer.enter(panel, {"text/uri-list"});
        peer.moveTo(panel, spot);
        ASSERT_TRUE(eventually([&] { return peer.wasAccepted("XdndStatus"); }));
        peer.drop(panel);
        ASSERT_TRUE(eventually([&] { return peer.wasAccepted("XdndFinished"); }));
    }
    /// The tooltips of the buttons before the windows', from left to right.
    std::vector<std::string> pins() {
        std::map<int, std::string> byPlace;
        const BarWindow panel = bar->panels().at(0);
        for (const BarView& view : panel.views)
            if (!view.hidden && !view.tooltip.empty() && !view.windowTitle()) byPlace[view.frame.x] = view.tooltip;
        std::vector<std::string> names;
        for (const auto& [x, name] : byPlace) names.push_back(name);
        return names;
    }
    Spot placeOf(const std::string& name) {
        EXPECT_TRUE(eventually([&] { return bar->group(name).has_value(); })) << name;
        return bar->group(name).value_or(BarView{}).frame.center();
    }
    testing::AssertionResult shows(const std::vector<std::string>& names) {
        const auto result = eventually([&] { return pins() == names; }) << testing::PrintToString(pins());
        desktop.runFor(200ms);  // buttons slide to their places for a little less
        return result;
    }
};

TEST_F(Pinned, ByMenuStayOverARestart) {
    Program alpha = runInstalled("Alpha", "a1");
    startBar({.defaults = R"({"groupingMode": "never", "showStartButton": false})"});
    pickFromMenu("a1", "Pin App to Morvel");
    ASSERT_TRUE(shows({"Alpha"}));
    const Box button = bar->group("Alpha")->frame;
    const auto blueOfDot = [&] {
        const Rgb color = world.shoot().average({button.x + button.width / 2 - 2, button.bottom() - 5, 4, 4});
        return color.blue - color.red;
    };
    EXPECT_TRUE(eventually([&] { return blueOfDot() > 40; })) << "the dot of a running application";
    alpha.signal(SIGKILL);
    EXPECT_TRUE(lacksButton("a1"));
    EXPECT_TRUE(eventually([&] { return blueOfDot() < 20; }));

    quitBar();
    startBar();
    ASSERT_TRUE(shows({"Alpha"}));
    pointer.rightClick(placeOf("Alpha"));
    for (const char* entry : {"Launch New Instance", "Show in Finder"}) EXPECT_TRUE(showsInPopup(entry));
    pick("Unpin from Morvel");
    EXPECT_TRUE(shows({}));
    quitBar();
    startBar();
    EXPECT_TRUE(shows({}));
}

TEST_F(Pinned, DroppedAreListedWhenCrowdedAndMovedByHand) {
    Program alpha = runInstalled("Alpha", "a1");
    startBar({.defaults = R"({"groupingMode": "never", "showStartButton": false, "pinnedMaxVisible": 2})"});
    ASSERT_TRUE(showsButton("a1"));
    const Box panel = panelBox();
    const auto closeList = [&] { pointer.click({panel.center().x, 200}); };
    dropFiles({"/usr", world.server.home() / ".local/share/applications/Alpha.desktop"},
              {panel.x + 2, panel.center().y});
    ASSERT_TRUE(shows({"usr", "Alpha"}));
    dropFiles({"/etc", "/var"}, {placeOf("Alpha").x + 12, panel.center().y});
    ASSERT_TRUE(shows({"usr", "Alpha", kShowMore}));
    pointer.click(placeOf(kShowMore));
    EXPECT_TRUE(showsInPopup("etc"));
    pointer.drag(popupItem("var").center(), {placeOf("usr").x - 12, panel.center().y});
    EXPECT_TRUE(shows({"var", "usr", kShowMore}));
    EXPECT_TRUE(showsInPopup("Alpha")) << "the open list follows";
    closeList();
    EXPECT_TRUE(closesPopups());

    pointer.drag(bar->button("a1")->frame.center(), {placeOf("var").x - 12, panel.center().y});
    ASSERT_TRUE(shows({"Alpha", "var", kShowMore})) << "the window's application";
    EXPECT_TRUE(showsButton("a1"));

    pointer.moveTo(placeOf("var"));
    pointer.press();
    for (int x = placeOf("var").x; x <= placeOf(kShowMore).x; x += 4) pointer.moveTo({x, panel.center().y});
    pointer.moveTo(placeOf(kShowMore));
    const Box row = popupItem("etc");
    ASSERT_FALSE(row.isEmpty()) << "a drag that rests opens the list";
    pointer.moveTo(row.center());
    pointer.moveTo({row.center().x, row.bottom() - 2});
    EXPECT_TRUE(showsInPopup("var")) << "room is made for it";
    pointer.release();
    EXPECT_TRUE(shows({"Alpha", "usr", kShowMore}));
    closeList();
    EXPECT_TRUE(closesPopups());
}

}  // namespace
}  // namespace morvel::e2e
