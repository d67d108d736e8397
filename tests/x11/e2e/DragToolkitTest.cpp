// Drags on a real X server, with windows of our toolkit in this process and other programs at the other end.
#include <gtest/gtest.h>

#include "Platform/Linux/Screens/XScreens.h"
#include "Platform/Linux/System/GLibMainLoop.h"
#include "Platform/Linux/System/StderrLog.h"
#include "Platform/Linux/UI/XToolkit.h"
#include "harness/DragPeer.h"
#include "harness/Pointer.h"

namespace morvel::e2e {
namespace {

const std::string kType = "app.morvel.Morvel.running-window";
using Told = std::vector<std::string>;

/// Can be dragged, takes files and its like, and notes what it is told.
class Tile : public ui::View {
public:
    Tile(ui::Toolkit& toolkit, std::string name) : toolkit_(toolkit), name_(std::move(name)) {}

    bool acceptsMouse() const override { return true; }
    void mouseDown(const ui::MouseEvent&) override { isPressed_ = true; }
    void mouseDragged(const ui::MouseEvent&) override {
        if (!std::exchange(isPressed_, false)) return;
        toolkit_.beginDrag(*this, {kType, name_}, [this](ui::DragOperation operation) {
            told.push_back("over " + std::to_string(static_cast<int>(operation)));
        });
    }
    void mouseUp(const ui::MouseEvent&) override {
        if (std::exchange(isPressed_, false)) told.push_back("clicked");
    }

    bool acceptsDrag(const ui::DragPasteboard& pasteboard) const override {
        return pasteboard.hasFileURLs() || pasteboard.hasType(kType);
    }
    ui::DragOperation draggingEntered(const ui::DragInfo& info) override {
        told.push_back("entered");
        return draggingUpdated(info);
    }
    ui::DragOperation draggingUpdated(const ui::DragInfo& info) override {
        location = info.location;
        return ui::DragOperation::Move;
    }
    void draggingExited() override { told.push_back("exited"); }
    void draggingEnded() override { told.push_back("ended"); }
    bool performDragOperation(const ui::DragInfo& info) override {
        std::string what = info.pasteboard.string(kType).value_or("");
        for (const auto& path : info.pasteboard.filePaths()) what += path;
        told.push_back("dropped " + what);
        return !what.empty();
    }

    Told told;
    Point<ViewSpace> location;

private:
    ui::Toolkit& toolkit_;
    const std::string name_;
    bool isPressed_ = false;
};

class DragToolkit : public testing::Test {
protected:
    DragToolkit() {
        connection_->settleReplies();
        for (Tile* tile : {&left_, &right_}) tile->setBackground(ui::customColor({1, 0.5, 0, 1}));
        for (auto& [root, tile] : {std::pair<ui::View*, Tile*>{&leftRoot_, &left_}, {&rightRoot_, &right_}}) {
            root->setFrame({0, 0, 400, 44});
            tile->setFrame({100, 4, 100, 36});
            root->addSubview(*tile);
        }
        leftPanel_ = toolkit_.makePanel({.frame = {0, 0, 400, 44}}, leftRoot_);
        rightPanel_ = toolkit_.makePanel({.frame = {600, 0, 400, 44}}, rightRoot_);
        leftPanel_->orderFront();
        rightPanel_->orderFront();
        connection_->settleReplies();
        desktop_.waitUntil([&] { return desktop_.connection().childrenOf(desktop_.connection().root()).size() >= 2; });
        turn();
        rightWindow_ = windowAt(kRight);
    }

    /// Everything that has arrived is handled, on both sides.
    void turn() {
        for (int i = 0; i < 3; ++i) {
            while (loop_.turn(false)) {
            }
            desktop_.connection().sync();
            desktop_.runFor(1ms);
        }
    }
    [[nodiscard]] bool eventually(const std::function<bool()>& reached) {
        const auto deadline = WaitClock::now() + kPatience;
        while (!reached() && WaitClock::now() < deadline) turn();
        return reached();
    }
    [[nodiscard]] bool isTold(const Tile& tile, const Told& told) {
        return eventually([&] { return tile.told.size() >= told.size(); }) && (turn(), tile.told == told);
    }

    xcb_window_t windowAt(Spot spot) {
        auto& c = desktop_.connection();
        for (const xcb_window_t window : c.childrenOf(c.root()))
            if (const auto box = c.boxOf(window); box && box->contains(spot) && c.bytes(window, "XdndAware"))
                return window;
        return XCB_NONE;
    }
    void pressLeftAndMoveTo(Spot spot) {
        left_.told.clear();
        pointer_.moveTo(kLeft);
        pointer_.press();
        turn();
        for (const Spot to : {Spot{kLeft.x + 8, kLeft.y}, spot}) {
            pointer_.moveTo(to);
            turn();
        }
    }
    /// The drag of the left tile is over and came to this.
    [[nodiscard]] bool endsWith(const std::string& operation) {
        return eventually([&] { return !left_.told.empty() && left_.told.back() == operation; });
    }
    /// The peer drags over the right tile and was answered.
    [[nodiscard]] bool hover(DragPeer& peer, const std::vector<std::string>& types) {
        const size_t before = peer.count("XdndStatus");
        peer.enter(rightWindow_, types);
        peer.moveTo(rightWindow_, kRight);
        return eventually([&] { return peer.count("XdndStatus") > before; });
    }

    /// The peer drops such contents there; whether it was told that they were taken.
    [[nodiscard]] bool takesDrop(DragPeer& peer, const std::vector<std::string>& types) {
        const size_t before = peer.count("XdndFinished");
        EXPECT_TRUE(hover(peer, types));
        peer.drop(rightWindow_);
        EXPECT_TRUE(eventually([&] { return peer.count("XdndFinished") == before + 1; }));
        return peer.wasAccepted("XdndFinished");
    }

    static constexpr Spot kLeft{150, 778}, kRight{750, 778}, kNowhere{500, 300};

    XServer server_{1280, 800};
    Desktop desktop_{server_.display()};
    Pointer pointer_{desktop_};
    x11::StderrLog log_;
    x11::GLibMainLoop loop_;
    std::unique_ptr<x11::XConnection> connection_ = x11::XConnection::open(server_.display(), log_, [] {});
    x11::XScreens screens_{*connection_, loop_};
    x11::XToolkit toolkit_{*connection_, loop_, screens_};
    ui::View leftRoot_, rightRoot_;
    Tile left_{toolkit_, "left"}, right_{toolkit_, "right"};
    std::unique_ptr<ui::PanelPeer> leftPanel_, rightPanel_;
    xcb_window_t rightWindow_ = XCB_NONE;
};

TEST_F(DragToolkit, GoesFromOneWindowOfOursToAnother) {
    pressLeftAndMoveTo({120, 778});
    EXPECT_TRUE(isTold(left_, {"entered"})) << "over itself, at once";
    EXPECT_EQ(left_.location, (Point<ViewSpace>{120, 22}));
    pointer_.moveTo(kNowhere);
    turn();
    EXPECT_TRUE(isTold(left_, {"entered", "exited"}));
    pointer_.moveTo(kRight);
    turn();
    EXPECT_TRUE(isTold(right_, {"entered"}));
    EXPECT_EQ(right_.location, (Point<ViewSpace>{150, 22}));
    pointer_.release();
    EXPECT_TRUE(isTold(right_, {"entered", "dropped left", "ended"}));
    EXPECT_TRUE(isTold(left_, {"entered", "exited", "ended", "over 2"})) << testing::PrintToString(left_.told);

    right_.told.clear();
    pointer_.drag(kLeft, kRight);  // over before the first of it is handled
    EXPECT_TRUE(isTold(right_, {"entered", "dropped left", "ended"})) << testing::PrintToString(right_.told);
    EXPECT_EQ(left_.told.back(), "over 2");
    pointer_.click(kRight);
    EXPECT_TRUE(eventually([&] { return right_.told.back() == "clicked"; })) << "the pointer is still held";
}

TEST_F(DragToolkit, IsCancelledByEscape) {
    pressLeftAndMoveTo(kRight);
    pointer_.key(kKeyEscape);
    EXPECT_TRUE(isTold(right_, {"entered", "exited", "ended"})) << testing::PrintToString(right_.told);
    EXPECT_EQ(left_.told.back(), "over 0");
    pointer_.release();
    turn();
    EXPECT_EQ(right_.told.back(), "ended") << "what follows belongs to no drag";
}

TEST_F(DragToolkit, OutlivesTheWindowsItIsAbout) {
    pressLeftAndMoveTo(kRight);
    rightPanel_.reset();
    turn();
    pointer_.moveTo({kRight.x + 5, kRight.y});
    turn();
    leftPanel_.reset();
    turn();
    pointer_.release();
    EXPECT_TRUE(endsWith("over 0"));
    EXPECT_EQ(right_.told, Told{"entered"}) << "it is shown no more, so nobody speaks to it";
}

TEST_F(DragToolkit, ReachesOtherProgramsAndDoesNotWaitForThem) {
    DragPeer peer(server_, desktop_, {450, 200, 200, 200});
    pressLeftAndMoveTo(kNowhere);
    pointer_.release();
    EXPECT_TRUE(endsWith("over 0")) << "it does not want it";
    EXPECT_EQ(peer.count("XdndDrop"), 0U);

    peer.accept(kType);
    pressLeftAndMoveTo(kNowhere);
    ASSERT_TRUE(eventually([&] { return peer.count("XdndEnter") == 2; }));
    EXPECT_TRUE(eventually([&] { return peer.last("XdndPosition")->data[2] == (500U << 16 | 300U); }));
    for (int i = 0; i < 50; ++i) pointer_.moveTo({kNowhere.x + i, kNowhere.y});
    pointer_.release();
    ASSERT_TRUE(eventually([&] { return peer.received().has_value(); }));
    EXPECT_EQ(peer.received(), "left");
    EXPECT_EQ(peer.last("XdndPosition")->data[2], 549U << 16 | 300U) << "dropped where it was let go";
    EXPECT_EQ(peer.count("XdndEnter"), 2U) << "once for each drag";
    EXPECT_TRUE(endsWith("over 2"));

    const size_t left = peer.count("XdndLeave");
    pressLeftAndMoveTo(kNowhere);
    pointer_.moveTo(kLeft);
    EXPECT_TRUE(eventually([&] { return peer.count("XdndLeave") > left; })) << "over a window of ours again";
    pointer_.release();
    EXPECT_TRUE(endsWith("over 2"));

    peer.fallSilent();
    const size_t positions = peer.count("XdndPosition");
    pressLeftAndMoveTo(kNowhere);
    ASSERT_TRUE(eventually([&] { return peer.count("XdndPosition") > positions; }));
    pointer_.release();
    EXPECT_TRUE(endsWith("over 0")) << "it never answers";
    EXPECT_EQ(peer.count("XdndDrop"), 1U);
}

TEST_F(DragToolkit, TakesFilesOfOtherPrograms) {
    DragPeer peer(server_, desktop_);
    peer.offer("text/uri-list", "file:///tmp/a%20b\r\nhttps://example.org/\r\nfile:///tmp/c\r\n");
    EXPECT_TRUE(takesDrop(peer, {"text/plain", "TEXT", "x/y", "text/uri-list"}));
    const uint32_t copy = peer.connection().atom("XdndActionCopy");  // files stay where they are
    EXPECT_EQ(peer.last("XdndStatus")->data, (std::array<uint32_t, 5>{rightWindow_, 3, 0, 0, copy}));
    EXPECT_EQ(peer.last("XdndFinished")->data, (std::array<uint32_t, 5>{rightWindow_, 1, copy}));
    EXPECT_EQ(right_.told, (Told{"entered", "dropped /tmp/a b/tmp/c", "ended"}));
    peer.handOutInPieces(7);
    EXPECT_TRUE(takesDrop(peer, {"text/uri-list"}));
    EXPECT_EQ(right_.told.at(4), "dropped /tmp/a b/tmp/c") << "many pieces are one list";
    EXPECT_FALSE(takesDrop(peer, {"text/plain"}));
    EXPECT_EQ(peer.last("XdndStatus")->data, (std::array<uint32_t, 5>{rightWindow_, 2})) << "nothing is done then";
    EXPECT_EQ(right_.told.size(), 6U) << "nobody was asked";

    DragPeer heavy(server_, desktop_);
    heavy.offer("text/uri-list", std::string(2 << 20, 'x'));
    EXPECT_FALSE(takesDrop(heavy, {"text/uri-list"})) << "too much counts as nothing";
    heavy.fallSilent();
    right_.told.clear();
    EXPECT_FALSE(takesDrop(heavy, {"text/uri-list"})) << "nothing is handed out";
    EXPECT_EQ(right_.told, (Told{"entered", "exited", "ended"}));

    ASSERT_TRUE(hover(heavy, {"text/uri-list"}));
    heavy.drop(rightWindow_);
    EXPECT_TRUE(hover(heavy, {"text/uri-list"})) << "who drags anew does not wait for the drop before";
    EXPECT_EQ(heavy.count("XdndFinished"), 3U);
}

TEST_F(DragToolkit, EndsWithItsSourceOrWhenTheButtonIsLetGoElsewhere) {
    DragPeer peer(server_, desktop_);
    pointer_.moveTo(kNowhere);
    pointer_.press();
    ASSERT_TRUE(hover(peer, {kType}));
    peer.leave(rightWindow_);
    EXPECT_TRUE(isTold(right_, {"entered", "exited"}));
    ASSERT_TRUE(hover(peer, {kType}));
    EXPECT_TRUE(isTold(right_, {"entered", "exited", "entered"})) << "the same drag comes back";
    peer.leave(rightWindow_);
    pointer_.release();
    EXPECT_TRUE(isTold(right_, {"entered", "exited", "entered", "exited", "ended"}));

    right_.told.clear();
    pointer_.press();
    ASSERT_TRUE(hover(peer, {kType}));
    peer.destroyWindow();
    EXPECT_TRUE(isTold(right_, {"entered", "exited", "ended"})) << "its source is gone";
    pointer_.release();

    DragPeer mute(server_, desktop_);
    right_.told.clear();
    ASSERT_TRUE(hover(mute, {kType}));
    EXPECT_TRUE(isTold(right_, {"entered", "exited", "ended"})) << "no button is held and nothing more is heard";
}

}  // namespace
}  // namespace morvel::e2e
