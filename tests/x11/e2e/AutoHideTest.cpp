// Bars that hide at their edge, beside a real window manager and under a real pointer.
#include <set>

#include "BarTest.h"
#include "harness/DragPeer.h"

namespace morvel::e2e {
namespace {

constexpr Spot kMiddle{640, 300};
/// Longer than the bar waits for the pointer to come back.
constexpr auto kLongAway = 1600ms;

class AutoHide : public BarTest {
protected:
    void startHidden(const std::string& more = R"("groupingMode": "never")", size_t panels = 1) {
        pointer.moveTo(kMiddle);
        startBar({.defaults = R"({"autoHide": true, )" + more + "}"}, panels);
        ASSERT_TRUE(becomesHidden());
    }
    bool isSeen(size_t index = 0) { return desktop.box().contains(panelBox(index)); }
    testing::AssertionResult becomesSeen(size_t index = 0) {
        return eventually([&] { return isSeen(index); }) << ": the bar is shown";
    }
    testing::AssertionResult becomesHidden() {
        const auto isBeside = [&] { return panelBox().y >= desktop.box().bottom() || panelBox().bottom() <= 0; };
        return eventually(isBeside) << ": the bar is hidden";
    }
    void touchEdge() { pointer.moveTo({900, desktop.box().bottom() - 1}); }
    /// The bar comes from below the edge, and the pointer is over it.
    void reveal() {
        touchEdge();
        ASSERT_TRUE(becomesSeen());
        pointer.moveTo({900, panelBox().center().y});
    }
    void expectHeldUntil(const char* what, const std::function<void()>& close) {
        pointer.moveTo(kMiddle);
        desktop.runFor(kLongAway);
        EXPECT_TRUE(isSeen()) << what;
        close();
        EXPECT_TRUE(becomesHidden()) << "after " << what;
    }
    /// The windows that wait at an edge: none of the bar's others is that thin.
    std::vector<xcb_window_t> strips() {
        auto& connection = desktop.connection();
        std::vector<xcb_window_t> found = connection.childrenOf(connection.root());
        std::erase_if(found, [&](xcb_window_t w) {
            return connection.boxOf(w).value_or(Box{}).height != 2 || !connection.isViewable(w);
        });
        return found;
    }
};

TEST_F(AutoHide, ComesToThePointerAtTheEdgeAndGoesWithIt) {
    const auto window = client.openAndWait({.title = "Whole screen", .color = 0x203040});
    startHidden();
    desktop.setMaximized(window, true);
    ASSERT_TRUE(eventually([&] { return desktop.windowBox(window).bottom() == desktop.box().bottom(); }))
        << "a hidden bar reserves nothing: " << desktop.windowBox(window);
    desktop.activate(window);
    const Box edge{0, desktop.box().bottom() - 60, desktop.box().width, 60};
    EXPECT_TRUE(eventually([&] { return world.shoot().colorsIn(edge) == 1; })) << "neither bar nor strip can be seen";

    touchEdge();
    ASSERT_TRUE(becomesSeen()) << "the maximized window lies over the strip";
    EXPECT_EQ(panelBox().bottom(), desktop.box().bottom());
    EXPECT_EQ(desktop.windowBox(window).bottom(), desktop.box().bottom()) << "a shown one neither";
    EXPECT_GT(world.shoot().colorsIn(edge), 1);
    pointer.moveTo({900, panelBox().center().y});
    desktop.runFor(kLongAway);
    EXPECT_TRUE(isSeen()) << "it waits for the pointer to leave";
    // The outermost row of pixels is the easiest to hit, and the bar's.
    pointer.rightClick({900, desktop.box().bottom() - 1});
    ASSERT_TRUE(showsInPopup("Morvel Settings…"));
    expectHeldUntil("a menu", [&] { pointer.key(kKeyEscape); });
    reveal();
    clickButton("Whole screen");
    EXPECT_TRUE(becomesMinimized(window));

    pointer.moveTo(kMiddle);
    EXPECT_TRUE(becomesHidden());
    EXPECT_EQ(strips().size(), 1U);
    touchEdge();
    EXPECT_TRUE(becomesSeen()) << "and again";
    pointer.moveTo(kMiddle);
    EXPECT_TRUE(becomesHidden()) << "though it was hardly entered";
}

TEST_F(AutoHide, ComesToAFileThatIsDraggedToTheEdgeAndStaysWithAList) {
    auto alpha = runPuppet("Alpha", {"a1", "a2"});
    startHidden(R"("groupingMode": "always")");
    ASSERT_EQ(strips().size(), 1U);
    const xcb_window_t strip = strips().front();
    const xcb_window_t panel = bar->panels().at(0).id;
    DragPeer peer(world.server, desktop);
    peer.offer("text/uri-list", "file:///tmp/a\r\n");
    peer.enter(strip, {"text/uri-list"});
    peer.moveTo(strip, {640, desktop.box().bottom() - 1});
    ASSERT_TRUE(becomesSeen());
    EXPECT_TRUE(eventually([&] { return peer.count("XdndStatus") == 1; })) << "a source waits for that";
    peer.leave(strip);
    peer.enter(panel, {"text/uri-list"});
    for (int i = 0; i < 4; ++i) {
        peer.moveTo(panel, {640 + i, panelBox().center().y});
        desktop.runFor(kLongAway / 4);
    }
    EXPECT_TRUE(isSeen());
    peer.leave(panel);
    EXPECT_TRUE(becomesHidden());

    ASSERT_TRUE(eventually([&] { return bar->group("Alpha").has_value(); }));
    reveal();
    pointer.click(bar->group("Alpha").value_or(BarView{}).frame.center());
    ASSERT_TRUE(showsInPopup("a1"));
    expectHeldUntil("a list", [&] { pointer.click(kMiddle); });
}

TEST_F(AutoHide, TheEdgeIsInFrontAgainWheneverWindowsAreRestacked) {
    const auto one = client.openAndWait({.title = "One"});
    ASSERT_TRUE(becomesActive(client.openAndWait({.title = "Two"})));
    startHidden();
    // What some window managers do to each window that they raise: it comes before all that are not managed.
    const DragPeer inFront(world.server, desktop, {0, 700, 1280, 100});
    const auto staysInFront = [&] {  // the bar may still answer to the restacking of its own start
        auto& connection = desktop.connection();
        const uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(connection, inFront.window(), XCB_CONFIG_WINDOW_STACK_MODE, &above);
        desktop.runFor(300ms);
        return connection.childrenOf(connection.root()).back() == inFront.window();
    };
    ASSERT_TRUE(eventually(staysInFront));
    touchEdge();
    desktop.runFor(300ms);
    ASSERT_FALSE(isSeen()) << "the other window has the pointer";
    desktop.activate(one);
    EXPECT_TRUE(becomesSeen());
}

TEST_F(AutoHide, ABarAboveAnotherDisplayNeverShowsThere) {
    constexpr Box kUpper{0, 0, 1280, 400}, kLower{0, 400, 1280, 400};
    desktop.setMonitors({{"upper", kUpper, true}, {"lower", kLower}});
    pointer.moveTo({640, 200});
    startBar({.defaults = R"({"autoHide": true})"}, 1);  // the lower display's, past the edge; the upper one's is out
    ASSERT_TRUE(eventually([&] { return strips().size() == 2; }));
    EXPECT_TRUE(becomesHidden());
    const Screenshot bare = world.shoot();
    bool hasShownBelow = false;
    const auto look = [&] {
        hasShownBelow = hasShownBelow || !world.shoot().differenceTo(bare, kLower).isEmpty();
        return bar->panels().size() == 2;
    };
    pointer.moveTo({640, kUpper.bottom() - 1});
    EXPECT_TRUE(eventually(look));
    EXPECT_EQ(panelBox(0), (Box{0, 356, 1280, 44}));
    pointer.moveTo({640, 500});  // on to the display below
    EXPECT_TRUE(eventually([&] { return look(), bar->panels().size() == 1; }));
    EXPECT_FALSE(hasShownBelow);
    EXPECT_TRUE(eventually([&] { return world.shoot().differenceTo(bare, desktop.box()).isEmpty(); }));
}

TEST_F(AutoHide, AButtonIsDraggedToTheHiddenBarOfAnotherDisplay) {
    splitInTwo();
    const auto mover = client.openAndWait({.title = "Mover", .box = {60, 60, 300, 200}});
    startHidden(R"("groupingMode": "never")", 2);
    ASSERT_TRUE(showsButton("Mover", 0));
    pointer.moveTo({320, 799});
    ASSERT_TRUE(becomesSeen(0));
    const Spot button = bar->button("Mover", 0)->frame.center();
    pointer.moveTo(button);
    pointer.press();
    for (int x = button.x; x < 900; x += 20) pointer.moveTo({x, 700});
    desktop.runFor(kLongAway);
    EXPECT_TRUE(isSeen(0)) << "while one of its buttons is dragged";
    pointer.moveTo({900, 799});
    ASSERT_TRUE(becomesSeen(1));
    pointer.moveTo({902, 780});
    pointer.moveTo({900, 778});
    desktop.runFor(300ms);
    pointer.release();
    EXPECT_TRUE(eventually([&] { return kRight.contains(desktop.windowBox(mover)); })) << desktop.windowBox(mover);
    pointer.moveTo(kMiddle);
    EXPECT_TRUE(becomesHidden());
}

TEST_F(AutoHide, JumpsForWhoeverWantsLessMotion) {
    startHidden();
    // Little-endian, one setting: Gtk/EnableAnimations is the number 0.
    tellSettings({"\0\0\0\0\1\0\0\0\1\0\0\0\0\0\x14\0Gtk/EnableAnimations\0\0\0\0\0\0\0\0", 44});
    Connection watching(world.server.display());
    watching.listen(bar->panels().at(0).id, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    watching.sync();
    // Where the window manager says that the panel is: only what is sent is in root coordinates.
    const auto placesPassed = [&] {
        std::set<int> passed;
        watching.sync();
        while (const Event event = watching.next())
            if (typeOf(event) == XCB_CONFIGURE_NOTIFY && (event->response_type & 0x80))
                passed.insert(as<xcb_configure_notify_event_t>(event).y);
        return passed.size();
    };
    touchEdge();
    ASSERT_TRUE(becomesSeen());
    EXPECT_EQ(placesPassed(), 1U);
    client.connection().own(XCB_NONE, "_XSETTINGS_S0");
    pointer.moveTo(kMiddle);
    ASSERT_TRUE(becomesHidden());
    EXPECT_GT(placesPassed(), 3U) << "else it slides";
}

}  // namespace
}  // namespace morvel::e2e
