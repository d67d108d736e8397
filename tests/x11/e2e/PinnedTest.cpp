// Pinned items on a real desktop: pinned by menu and by drop, kept over a restart, moved by hand, listed when crowded.
#include <filesystem>
#include <fstream>
#include <map>

#include "BarTest.h"
#include "harness/DragPeer.h"

namespace morvel::e2e {
namespace {

constexpr const char* kShowMore = "Show more pinned items";

class Pinned : public BarTest {
protected:
    /// An application that the system knows, with a window.
    Program install(const std::string& name, const std::string& windowTitle) {
        const auto folder = world.server.home() / ".local/share/applications";
        std::filesystem::create_directories(folder);
        std::ofstream(folder / (name + ".desktop"))
            << "[Desktop Entry]\nType=Application\nName=" << name << "\nExec=" << MORVEL_PUPPET << " " << name
            << " launched\nIcon=folder\n";
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
            if (!view.hidden && !view.tooltip.empty() && view.tooltip.find("\u2014") == std::string::npos)
                byPlace[view.frame.x] = view.tooltip;
        std::vector<std::string> names;
        for (const auto& [x, name] : byPlace) names.push_back(name);
        return names;
    }
    Spot placeOf(const std::string& name) {
        EXPECT_TRUE(eventually([&] { return bar->group(name).has_value(); })) << name;
        return bar->group(name).value_or(BarView{}).frame.center();
    }
    testing::AssertionResult shows(const std::vector<std::string>& names) {
        const auto result = eventually([&] { return pins() == names; });
        desktop.runFor(200ms);  // buttons slide to their places for a little less
        if (result) return result;
        std::string seen;
        for (const std::string& name : pins()) seen += " [" + name + "]";
        return testing::AssertionFailure() << "shown:" << seen;
    }
    void quit() {
        bar->program().signal(SIGTERM);
        EXPECT_EQ(bar->program().waitForExit(), 0);
        bar.reset();
    }
};

TEST_F(Pinned, ByMenuStayOverARestart) {
    Program alpha = install("Alpha", "a1");
    startBar({.defaults = R"({"groupingMode": "never", "showStartButton": false})"});
    pickFromMenu("a1", "Pin App to Morvel");
    ASSERT_TRUE(shows({"Alpha"}));
    const Box button = bar->group("Alpha")->frame;
    const Box dot{button.x + button.width / 2 - 2, button.bottom() - 5, 4, 4};
    EXPECT_TRUE(eventually([&] {
        const Rgb color = world.shoot().average(dot);
        return color.blue - color.red > 40;
    })) << "the dot of a running application";
    alpha.signal(SIGKILL);
    EXPECT_TRUE(lacksButton("a1"));
    EXPECT_TRUE(eventually([&] { return world.shoot().average(dot).blue - world.shoot().average(dot).red < 20; }));

    quit();
    startBar();
    ASSERT_TRUE(shows({"Alpha"}));
    pointer.rightClick(placeOf("Alpha"));
    for (const char* entry : {"Launch New Instance", "Show in Finder"})
        EXPECT_FALSE(popupItem(entry).isEmpty()) << entry;
    pointer.click(popupItem("Unpin from Morvel").center());
    EXPECT_TRUE(shows({}));
    quit();
    startBar();
    EXPECT_TRUE(shows({}));
}

TEST_F(Pinned, DroppedAndReorderedByHand) {
    Program alpha = install("Alpha", "a1");
    startBar({.defaults = R"({"groupingMode": "never", "showStartButton": false, "pinnedMaxVisible": 5})"});
    ASSERT_TRUE(showsButton("a1"));
    const Box panel = panelBox();
    const Spot start{panel.x + 2, panel.center().y};
    dropFiles({"/usr", world.server.home() / ".local/share/applications/Alpha.desktop"}, start);
    ASSERT_TRUE(shows({"usr", "Alpha"}));
    dropFiles({"/tmp"}, placeOf("Alpha"));
    const Spot alphaAt = placeOf("Alpha");
    ASSERT_TRUE(eventually([&] { return pins().size() == 3; }));
    const std::vector<std::string> order = pins();
    pointer.drag(placeOf(order[0]), {placeOf(order[2]).x + 12, alphaAt.y});
    EXPECT_TRUE(shows({order[1], order[2], order[0]}));
    pointer.moveTo({panel.center().x, 300});
    EXPECT_TRUE(eventually([&] { return bar->group(order[0])->alpha == 1; }));

    const Spot window = bar->button("a1")->frame.center();
    pointer.drag(window, {placeOf(order[1]).x - 12, alphaAt.y});
    EXPECT_TRUE(eventually([&] { return pins().size() == 3 && pins()[0] == "Alpha"; })) << "the window's application";
    EXPECT_TRUE(showsButton("a1"));
}

TEST_F(Pinned, OverflowIsListedAndTakesDrops) {
    startBar({.defaults = R"({"showStartButton": false, "pinnedMaxVisible": 2})"});
    const Box panel = panelBox();
    dropFiles({"/usr", "/tmp", "/etc", "/var"}, {panel.x + 2, panel.center().y});
    ASSERT_TRUE(shows({"usr", "tmp", kShowMore}));
    pointer.click(placeOf(kShowMore));
    EXPECT_FALSE(popupItem("etc").isEmpty());
    pointer.drag(popupItem("var").center(), {placeOf("usr").x - 12, panel.center().y});
    EXPECT_TRUE(shows({"var", "usr", kShowMore}));
    EXPECT_FALSE(popupItem("tmp").isEmpty()) << "the open list follows";
    pointer.click({panel.center().x, 200});
    EXPECT_TRUE(eventually([&] { return bar->popups().empty(); }));

    pointer.moveTo(placeOf("var"));
    pointer.press();
    for (int x = placeOf("var").x; x <= placeOf(kShowMore).x; x += 4) pointer.moveTo({x, panel.center().y});
    pointer.moveTo(placeOf(kShowMore));
    const Box row = popupItem("etc");
    ASSERT_FALSE(row.isEmpty()) << "a drag that rests opens the list";
    pointer.moveTo(row.center());
    pointer.moveTo({row.center().x, row.bottom() - 2});
    EXPECT_TRUE(eventually([&] { return !popupItem("var").isEmpty(); })) << "room is made for it";
    pointer.release();
    EXPECT_TRUE(shows({"usr", "tmp", kShowMore}));
    pointer.click({panel.center().x, 200});
    EXPECT_TRUE(eventually([&] { return bar->popups().empty(); }));
}

}  // namespace
}  // namespace morvel::e2e
