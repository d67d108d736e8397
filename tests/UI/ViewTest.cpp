#include "UI/View.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "UI/EventRouter.h"
#include "UI/ImageButton.h"
#include "UI/StackView.h"

namespace morvel::ui {

namespace {

/// A view that wants a size and tells what the pointer does to it.
class Probe : public View {
public:
    using Log = std::vector<std::string>;

    Probe(std::string n, Log& l, Size wanted = {}) : name(std::move(n)), log(l), size(wanted) {}

    Size intrinsicSize() const override { return size; }
    bool acceptsMouse() const override { return accepts; }
    bool tracksHover() const override { return true; }
    void mouseDown(const MouseEvent&) override { tell("down"); }
    void mouseDragged(const MouseEvent&) override { tell("drag"); }
    void mouseUp(const MouseEvent&) override { tell("up"); }
    void rightMouseDown(const MouseEvent&) override { tell("right"); }
    void mouseEntered(const MouseEvent&) override { tell("enter"); }
    void mouseExited() override { tell("exit"); }

    std::string name;
    Log& log;
    Size size;
    bool accepts = true;
    std::map<std::string, std::function<void()>> then;  ///< what else to do in a handler, by what it logs

private:
    void tell(const std::string& what) {
        log.push_back(name + " " + what);
        // A copy: the handler may destroy us.
        if (const auto found = then.find(what); found != then.end()) std::function(found->second)();
    }
};

/// A host that records what it is told, and passes on leaving views as hosts do.
class RecordingHost : public ViewHost {
public:
    void viewAttached(View& view) override {
        order.push_back(&view);
        view.setPeer(std::make_unique<ViewPeer>());
    }
    void viewWillDetach(View& view) override {
        EXPECT_NE(view.peer(), nullptr) << "the peer may be used until the host was told";
        if (router) router->viewWillDetach(view);
        std::erase(order, &view);
        ++detached;
    }
    void viewChanged(View& view, ViewChange change) override { changes.push_back({&view, change}); }
    void layoutNeeded() override { ++layoutRequests; }

    std::vector<View*> order;  ///< the shown views, in the order in which they came
    int detached = 0;
    std::vector<std::pair<View*, ViewChange>> changes;
    int layoutRequests = 0;
    EventRouter* router = nullptr;
};

/// A window of 100 by 100 with a router, as a host has it.
class ViewTest : public testing::Test {
protected:
    ViewTest() {
        host_.router = &router_;
        root_.setFrame({0, 0, 100, 100});
        root_.setHost(&host_);
    }
    ~ViewTest() override { root_.setHost(nullptr); }

    std::unique_ptr<Probe> probe(const std::string& name, Rect<ViewSpace> frame, View& parent) {
        auto view = std::make_unique<Probe>(name, log_);
        view->setFrame(frame);
        parent.addSubview(*view);
        return view;
    }
    Probe::Log takeLog() { return std::exchange(log_, {}); }

    using Log = Probe::Log;
    Log log_;
    RecordingHost host_;
    View root_;
    EventRouter router_{root_};
};

}  // namespace

TEST_F(ViewTest, TreesComeAndGoWhole) {
    View branch, leaf, other;
    branch.addSubview(leaf);
    root_.addSubview(branch);
    EXPECT_EQ(host_.order, (std::vector<View*>{&root_, &branch, &leaf})) << "parents first";
    EXPECT_EQ(leaf.host(), &host_);

    host_.changes.clear();
    root_.insertSubview(other, 0);
    EXPECT_EQ(host_.changes, (std::vector<std::pair<View*, ViewChange>>{{&root_, ViewChange::Order}}));
    const ViewPeer* peer = leaf.peer();
    root_.insertSubview(branch, 0);
    EXPECT_EQ(root_.subviews(), (std::vector<View*>{&branch, &other}));
    EXPECT_EQ(leaf.peer(), peer) << "a move within the parent keeps what the host made";
    root_.insertSubview(branch, 99);
    EXPECT_EQ(root_.subviews().back(), &branch);

    other.addSubview(branch);
    EXPECT_EQ(root_.subviews(), (std::vector<View*>{&other}));
    EXPECT_TRUE(leaf.isDescendantOf(other));
    EXPECT_EQ(host_.detached, 2) << "another parent: taken out, branch and leaf, and attached anew";
    other.removeFromParent();
    EXPECT_EQ(host_.order, (std::vector<View*>{&root_}));
    EXPECT_EQ(leaf.host(), nullptr);
    EXPECT_EQ(leaf.peer(), nullptr);
}

TEST_F(ViewTest, ADestroyedViewLeavesTheTreeByItself) {
    auto branch = std::make_unique<View>();
    View leaf;
    branch->addSubview(leaf);
    root_.addSubview(*branch);
    branch.reset();
    EXPECT_TRUE(root_.subviews().empty());
    EXPECT_EQ(leaf.parent(), nullptr);
    EXPECT_EQ(host_.order, (std::vector<View*>{&root_}));
}

TEST_F(ViewTest, TheHostHearsOfRealChangesOnly) {
    host_.changes.clear();
    for (int repeat = 0; repeat < 2; ++repeat) {
        root_.setFrame({0, 0, 100, 50});
        root_.setHidden(true);
        root_.setAlpha(0.5);
        root_.setBackground(kLabelColor);
        root_.setBorder(0.5, kLabelColor);
        root_.setTooltip("tip");
    }
    std::vector<ViewChange> kinds;
    for (const auto& [view, kind] : host_.changes) kinds.push_back(kind);
    using enum ViewChange;
    EXPECT_EQ(kinds, (std::vector{Frame, Visibility, Visibility, Look, Look, Texts}));
}

TEST_F(ViewTest, StacksLayOutTheirShownViews) {
    StackView row(StackView::Axis::Horizontal, 4);
    Probe a("a", log_, {10, 20}), hidden("hidden", log_, {50, 50}), tall("tall", log_, {30, 90});
    for (Probe* view : {&a, &hidden, &tall}) row.addArrangedSubview(*view);
    hidden.setHidden(true);
    row.setInsets(2, 3);
    EXPECT_EQ(row.intrinsicSize(), (Size{2 + 10 + 4 + 30 + 3, 90}));
    root_.addSubview(row);
    row.setFrame({0, 0, 100, 40});
    root_.layoutIfNeeded();
    EXPECT_EQ(a.frame(), (Rect<ViewSpace>{2, 10, 10, 20})) << "centred";
    EXPECT_EQ(tall.frame(), (Rect<ViewSpace>{16, 0, 30, 40})) << "not higher than the row";

    a.size.width = 12;
    const int requests = host_.layoutRequests;
    a.intrinsicSizeChanged();
    hidden.setHidden(false);
    EXPECT_GT(host_.layoutRequests, requests);
    root_.layoutIfNeeded();
    EXPECT_EQ(hidden.frame().x, 18);
    EXPECT_EQ(tall.frame().x, 72);
    row.insertArrangedSubview(tall, 0);
    root_.layoutIfNeeded();
    EXPECT_EQ(tall.frame().x, 2);
    EXPECT_EQ(a.frame().x, 36);

    StackView column(StackView::Axis::Vertical, 1);
    column.addArrangedSubview(a);
    column.addArrangedSubview(tall);
    column.setFrame({0, 0, 50, 200});
    column.layoutIfNeeded();
    EXPECT_EQ(column.intrinsicSize(), (Size{30, 111}));
    EXPECT_EQ(a.frame(), (Rect<ViewSpace>{0, 0, 50, 20}));
    EXPECT_EQ(tall.frame(), (Rect<ViewSpace>{0, 21, 50, 90}));
}

TEST_F(ViewTest, PressesGoToTheDeepestAcceptingViewUntilTheRelease) {
    const auto back = probe("back", {0, 0, 100, 100}, root_);
    const auto front = probe("front", {10, 10, 20, 20}, *back);
    const auto icon = probe("icon", {5, 5, 5, 5}, *front);
    icon->accepts = false;
    EXPECT_TRUE(router_.buttonPressed({MouseButton::Left, {16, 16}}));
    router_.pointerMoved({90, 90});
    router_.buttonReleased({MouseButton::Right, {90, 90}});
    router_.buttonReleased({MouseButton::Left, {90, 90}});
    router_.buttonReleased({MouseButton::Left, {90, 90}});
    EXPECT_EQ(takeLog(), (Log{"front down", "back enter", "front drag", "front up"}));

    EXPECT_TRUE(router_.buttonPressed({MouseButton::Right, {50, 50}}));
    EXPECT_EQ(takeLog(), Log{"back right"});
    back->setHidden(true);
    EXPECT_FALSE(router_.buttonPressed({MouseButton::Left, {16, 16}})) << "hidden with all it contains";
    EXPECT_TRUE(takeLog().empty());
}

TEST_F(ViewTest, HoverFollowsThePointerAndTheViews) {
    const auto outer = probe("outer", {0, 0, 50, 50}, root_);
    const auto inner = probe("inner", {0, 0, 20, 20}, *outer);
    const auto next = probe("next", {50, 0, 50, 50}, root_);
    inner->setTooltip("inner tip");
    outer->setTooltip("outer tip");
    router_.pointerMoved({10, 10});
    EXPECT_EQ(takeLog(), (Log{"outer enter", "inner enter"}));
    EXPECT_EQ(router_.tooltipView(), inner.get());
    router_.pointerMoved({20, 10});
    EXPECT_EQ(takeLog(), Log{"inner exit"}) << "the far edge is outside";
    EXPECT_EQ(router_.tooltipView(), outer.get());
    router_.pointerMoved({50, 10});
    EXPECT_EQ(takeLog(), (Log{"outer exit", "next enter"}));
    EXPECT_EQ(router_.tooltipView(), nullptr);

    next->setFrame({60, 0, 40, 50});
    outer->setFrame({0, 0, 60, 50});
    router_.layoutChanged();
    EXPECT_EQ(takeLog(), (Log{"next exit", "outer enter"})) << "views moved under a pointer that rests";
    outer->setHidden(true);
    router_.layoutChanged();
    EXPECT_EQ(takeLog(), Log{"outer exit"});
    outer->setHidden(false);
    router_.pointerExited();
    router_.layoutChanged();
    EXPECT_TRUE(takeLog().empty()) << "the pointer is elsewhere";
    EXPECT_EQ(router_.tooltipView(), nullptr);
}

TEST_F(ViewTest, HandlersMayDestroyViews) {
    auto outer = probe("outer", {0, 0, 50, 50}, root_);
    auto inner = probe("inner", {0, 0, 50, 50}, *outer);
    auto last = probe("last", {0, 0, 50, 50}, *outer);
    last->accepts = false;
    inner->then["down"] = [&] { inner.reset(); };
    router_.buttonPressed({MouseButton::Left, {5, 5}});
    router_.buttonReleased({MouseButton::Left, {5, 5}});
    EXPECT_EQ(takeLog(), Log{"inner down"}) << "nobody is left for the release";

    outer->then["enter"] = [&] { last.reset(); };
    router_.pointerMoved({5, 5});
    EXPECT_EQ(takeLog(), Log{"outer enter"}) << "a view that is gone is not entered";
    outer->then["exit"] = [&] { outer.reset(); };
    router_.pointerExited();
    EXPECT_EQ(takeLog(), Log{"outer exit"});
    EXPECT_TRUE(router_.hovered().empty());
    EXPECT_TRUE(root_.subviews().empty());
}

TEST_F(ViewTest, AnImageButtonIsClickedWhereItIsReleasedAndMayGoWithTheClick) {
    auto button = std::make_unique<ImageButton>();
    int clicks = 0;
    button->onClick = [&] {
        ++clicks;
        button.reset();
    };
    root_.addSubview(*button);
    button->setFrame({0, 0, 10, 10});
    for (const double x : {50, 5}) {
        EXPECT_EQ(clicks, 0) << "released elsewhere";
        router_.buttonPressed({MouseButton::Left, {5, 5}});
        router_.buttonReleased({MouseButton::Left, {x, 5}});
    }
    EXPECT_EQ(clicks, 1);
}

}  // namespace morvel::ui
