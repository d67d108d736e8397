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

TEST_F(Drags, OfFilesThatRestOnAButtonRaiseItsWindow) {
    startWithWindow("Target");
    const auto front = client.openAndWait({.title = "In front", .box = {150, 120, 320, 200}});
    ASSERT_TRUE(showsButton("In front"));
    ASSERT_TRUE(becomesActive(front));
    const Spot button = bar->button("Target")->frame.center();
    DragPeer peer(world.server, desktop);
    peer.offer("text/uri-list", "file:///tmp/a\r\n");

    peer.enter(panel, {"text/plain"});
    peer.moveTo(panel, button);
    desktop.runFor(900ms);
    EXPECT_EQ(desktop.activeWindow(), front) << "raised for a piece of text";
    peer.leave(panel);

    peer.enter(panel, {"text/uri-list"});
    peer.moveTo(panel, button);
    EXPECT_TRUE(becomesActive(window));
    peer.leave(panel);
    expectAlive("Target");
}

TEST_F(Drags, OfAButtonReorderTheBar) {
    startWithWindow("One");
    for (const char* title : {"Two", "Three"}) {
        client.openAndWait({.title = title});
        ASSERT_TRUE(showsButton(title));
    }
    ASSERT_TRUE(eventually([&] { return bar->buttonTitles() == std::vector<std::string>{"One", "Two", "Three"}; }));
    const auto active = desktop.windowTitled("Three").value();
    ASSERT_TRUE(becomesActive(active));
    const Box first = bar->button("One")->frame;
    const Box last = bar->button("Three")->frame;
    const std::vector<std::string> moved{"Two", "Three", "One"};

    pointer.moveTo(first.center());
    pointer.press();
    for (int x = first.center().x; x < last.right() - 4; x += 6) pointer.moveTo({x, first.center().y});
    EXPECT_TRUE(eventually([&] { return bar->buttonTitles() == moved; })) << "buttons make room under the hand";
    pointer.moveTo({last.center().x, 300});
    EXPECT_TRUE(eventually([&] { return bar->buttonTitles().front() == "One"; })) << "it has left the bar";
    pointer.moveTo({last.right() - 4, last.center().y});
    EXPECT_TRUE(eventually([&] { return bar->buttonTitles() == moved; }));
    pointer.release();
    EXPECT_TRUE(eventually([&] { return bar->button("One") && bar->button("One")->alpha == 1; })) << "still lifted";
    EXPECT_EQ(bar->buttonTitles(), moved);
    EXPECT_EQ(desktop.activeWindow(), active) << "a drag is no click";
}

TEST_F(Drags, OfAButtonCancelledByEscapePutItBack) {
    startWithWindow("One");
    client.openAndWait({.title = "Two"});
    const std::vector<std::string> order{"One", "Two"};
    ASSERT_TRUE(eventually([&] { return bar->buttonTitles() == order; }));
    const Box first = bar->button("One")->frame;
    const Box last = bar->button("Two")->frame;
    pointer.moveTo(first.center());
    pointer.press();
    for (int x = first.center().x; x < last.right() - 4; x += 6) pointer.moveTo({x, first.center().y});
    EXPECT_TRUE(eventually([&] { return bar->buttonTitles().front() == "Two"; }));
    pointer.key(kKeyEscape);
    EXPECT_TRUE(eventually([&] { return bar->buttonTitles() == order && bar->button("One")->alpha == 1; }));
    pointer.release();
}

TEST_F(Drags, OfAButtonToAnotherBarMoveItsWindow) {
    constexpr Box kLeft{0, 0, 640, 800}, kRight{640, 0, 640, 800};
    desktop.setMonitors({{"left", kLeft, true}, {"right", kRight}});
    const auto mover = client.openAndWait({.title = "Mover", .box = {60, 60, 300, 200}});
    client.openAndWait({.title = "Stayer", .box = {720, 60, 300, 200}});
    startBar({.defaults = kNeverGrouped}, 2);
    ASSERT_TRUE(showsButton("Mover", 0));
    ASSERT_TRUE(showsButton("Stayer", 1));
    const Box target = bar->button("Stayer", 1)->frame;
    pointer.drag(bar->button("Mover", 0)->frame.center(), {target.x + 4, target.center().y});
    EXPECT_TRUE(showsButton("Mover", 1));
    EXPECT_TRUE(lacksButton("Mover", 0));
    EXPECT_TRUE(eventually([&] { return kRight.contains(desktop.windowBox(mover)); })) << desktop.windowBox(mover);
    EXPECT_TRUE(eventually([&] {
        return bar->buttonTitles(1) == std::vector<std::string>{"Mover", "Stayer"};
    })) << "in the slot it was dropped at";
}

}  // namespace
}  // namespace morvel::e2e
