// The bar under other programs' drags, whatever they say.
#include "BarTest.h"
#include "harness/DragPeer.h"

namespace morvel::e2e {
namespace {

class Drags : public BarTest {
protected:
    /// The bar answers a sane peer, and clicks still do what they do.
    void expectAlive() {
        DragPeer sane(world.server, desktop);
        sane.enter(panel, {"text/uri-list"});
        sane.moveTo(panel, panelBox().center());
        EXPECT_TRUE(eventually([&] { return sane.count("XdndStatus") == 1; })) << sane.count("XdndStatus");
        sane.leave(panel);
        desktop.activate(window);
        ASSERT_TRUE(becomesActive(window));
        clickButton("Target");
        EXPECT_TRUE(becomesMinimized(window));
    }

    xcb_window_t window = XCB_NONE;
    xcb_window_t panel = XCB_NONE;
};

TEST_F(Drags, ThatAreNonsenseLeaveNothingBehind) {
    window = client.openAndWait({.title = "Target"});
    startBar();
    ASSERT_TRUE(showsButton("Target"));
    panel = bar->panels().at(0).id;
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
    expectAlive();
    EXPECT_EQ(peer.count("XdndStatus"), 0U) << "none of these is a drag";

    std::vector<uint32_t> garbage(50000, 0xFFFFFFFF);
    peer.connection().setCardinals(peer.window(), "XdndTypeList", "ATOM", garbage);
    peer.send(panel, "XdndEnter", {peer.window(), 5U << 24 | 1});
    peer.moveTo(panel, button);
    EXPECT_TRUE(eventually([&] { return peer.count("XdndStatus") == 1; })) << "a drag of nothing known";
    EXPECT_FALSE(peer.wasAccepted("XdndStatus"));
    peer.drop(panel);
    EXPECT_TRUE(eventually([&] { return peer.count("XdndFinished") == 1; }));
    DragPeer hasty(world.server, desktop);  // its connection stays, or the next window would have the same number
    hasty.enter(panel, {"text/uri-list"});
    hasty.moveTo(panel, button);
    hasty.drop(panel);
    hasty.destroyWindow();  // before anything could be asked
    expectAlive();
}

}  // namespace
}  // namespace morvel::e2e
