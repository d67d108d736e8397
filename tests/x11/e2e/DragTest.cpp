// The bar under a drag: other programs' drags over it, whatever they say, and its buttons dragged by hand.
#include "BarTest.h"
#include "harness/DragPeer.h"

namespace morvel::e2e {
namespace {

class Drags : public BarTest {
protected:
    void startWithWindow(const std::string& title) {
        window = client.openAndWait({.title = title});
        startBar({.defaults = kNeverGrouped});
        ASSERT_TRUE(showsButton(title));
        panel = bar->panels().at(0).id;
        const Box frame = bar->button(title)->frame;
        ASSERT_TRUE(eventually([&] {
            return world.shoot().colorsIn({frame.x + 6, frame.y + 7, 18, 18}) > 4;
        })) << "its icon";
    }
    /// The bar answers the peer, and clicks still do what they do.
    void expectAlive(const std::string& title) {
        DragPeer sane(world.server, desktop);
        sane.enter(panel, {"text/uri-list"});
        sane.moveTo(panel, panelBox().center());
        EXPECT_TRUE(eventually([&] { return sane.count("XdndStatus") == 1; }));
        sane.leave(panel);
        ASSERT_TRUE(becomesActive(window));
        clickButton(title);
        EXPECT_TRUE(becomesMinimized(window));
    }

    xcb_window_t window = XCB_NONE;
    xcb_window_t panel = XCB_NONE;
};

TEST_F(Drags, OfOtherProgramsAreAnswered) {
    startWithWindow("Target");
    EXPECT_EQ(desktop.connection().cardinals(panel, "XdndAware"), std::vector<uint32_t>{5});
    DragPeer peer(world.server, desktop);
    peer.offer("text/uri-list", "file:///tmp/a\r\n");
    peer.enter(panel, {"text/uri-list"});
    for (int x = 0; x < 600; x += 20) {
        const size_t before = peer.count("XdndStatus");
        peer.moveTo(panel, {x, panelBox().center().y});
        ASSERT_TRUE(eventually([&] { return peer.count("XdndStatus") > before; })) << "at " << x;
    }
    EXPECT_EQ(peer.last("XdndStatus")->data[0], panel);
    const size_t answers = peer.count("XdndStatus");
    peer.leave(panel);
    peer.moveTo(panel, panelBox().center());
    peer.drop(panel);
    expectAlive("Target");
    EXPECT_EQ(peer.count("XdndStatus"), answers) << "it had left";
    EXPECT_EQ(peer.count("XdndFinished"), 0U);
}

TEST_F(Drags, ThatAreNonsenseLeaveNothingBehind) {
    startWithWindow("Target");
    const Spot button = bar->button("Target")->frame.center();
    DragPeer peer(world.server, desktop);
    for (const uint32_t version : {0U, 2U, 6U, 255U}) {
        peer.enter(panel, {"text/uri-list"}, version);
        peer.moveTo(panel, button);
    }
    desktop.connection().sync();
    const xcb_window_t wrong[] = {XCB_NONE, desktop.connection().root(), panel, 0xDEADBEEF};
    for (const xcb_window_t source : wrong) {
        peer.send(panel, "XdndEnter", {source, 5U << 24 | 1, 0xFFFFFFFF, 1, 2});
        peer.send(panel, "XdndPosition", {source, 0, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF});
        peer.send(panel, "XdndDrop", {source, 0xFFFFFFFF, 0xFFFFFFFF});
    }
    for (const char* message : {"XdndLeave", "XdndDrop", "XdndStatus", "XdndFinished", "XdndPosition"})
        peer.send(panel, message, {peer.window(), 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF});
    expectAlive("Target");
    EXPECT_EQ(peer.count("XdndStatus"), 0U) << "none of these is a drag";

    std::vector<uint32_t> garbage(50000, 0xFFFFFFFF);
    peer.connection().setCardinals(peer.window(), "XdndTypeList", "ATOM", garbage);
    peer.send(panel, "XdndEnter", {peer.window(), 5U << 24 | 1});
    peer.moveTo(panel, button);
    EXPECT_TRUE(eventually([&] { return peer.count("XdndStatus") == 1; })) << "a drag of nothing known";
    EXPECT_FALSE(peer.wasAccepted("XdndStatus"));
    peer.drop(panel);
    EXPECT_TRUE(eventually([&] { return peer.count("XdndFinished") == 1; }));
    desktop.activate(window);
    expectAlive("Target");
}

TEST_F(Drags, EndWithASourceThatDies) {
    startWithWindow("Target");
    const Spot button = bar->button("Target")->frame.center();
    const auto idle = world.shoot();
    {
        DragPeer dying(world.server, desktop);
        dying.enter(panel, {"text/uri-list"});
        dying.moveTo(panel, button);
        EXPECT_TRUE(eventually([&] { return dying.count("XdndStatus") == 1; }));
    }
    EXPECT_TRUE(eventually([&] { return world.shoot().differenceTo(idle, panelBox()).isEmpty(); }))
        << "the bar still looks as under a drag";
    {
        DragPeer hasty(world.server, desktop);
        hasty.enter(panel, {"text/uri-list"});
        hasty.moveTo(panel, button);
        hasty.drop(panel);  // and gone before anything could be asked
    }
    expectAlive("Target");
}

}  // namespace
}  // namespace morvel::e2e
