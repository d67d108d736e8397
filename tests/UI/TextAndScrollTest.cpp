// What the views that are typed into and scrolled promise to every host.
#include <gtest/gtest.h>

#include "UI/Popover.h"
#include "UI/ScrollView.h"
#include "UI/TextField.h"
#include "sim/FakeMainLoop.h"
#include "sim/SimToolkit.h"

namespace morvel::ui {
namespace {

struct Document : View {
    double height = 1000;
    Size intrinsicSize() const override { return {0, height}; }
};

struct Scrolled : testing::Test {
    Document document;
    ScrollView view{document};
    View root;
    sim::FakeMainLoop loop;
    sim::SimSurface surface{loop, root};

    Scrolled() {
        root.setFrame({0, 0, 200, 100});
        root.addSubview(view);
        view.setFrame({0, 0, 200, 100});
        root.setHost(&surface);
        surface.layoutNow();
    }
    ~Scrolled() override { root.setHost(nullptr); }
    View& scroller() { return *view.subviews().back(); }
};

TEST_F(Scrolled, NoFurtherThanThereIsSomethingToSee) {
    int scrolls = 0;
    view.onScroll = [&] { ++scrolls; };
    view.scrollTo(-50);
    EXPECT_EQ(view.offset(), 0);
    EXPECT_EQ(scrolls, 0) << "nothing moved";
    view.scrollTo(5000);
    EXPECT_EQ(view.offset(), 900);
    EXPECT_EQ(document.frame().y, -900);
    EXPECT_EQ(scrolls, 1);

    document.height = 300;
    document.intrinsicSizeChanged();
    surface.layoutNow();
    EXPECT_EQ(view.offset(), 200) << "the document became shorter";
    document.height = 60;
    document.intrinsicSizeChanged();
    surface.layoutNow();
    EXPECT_EQ(document.frame(), (Rect<ViewSpace>{0, 0, 200, 100}))
        << "as high as the view, so that it takes its presses";
    EXPECT_TRUE(scroller().isHidden());
    EXPECT_FALSE(view.scrollWheel({{10, 10}, 1})) << "a wheel that does nothing is left to what is around";
}

TEST_F(Scrolled, AsLittleAsItTakesToShowARow) {
    view.scrollToVisible(40, 60);
    EXPECT_EQ(view.offset(), 0);
    view.scrollToVisible(140, 160);
    EXPECT_EQ(view.offset(), 60);
    view.scrollToVisible(20, 40);
    EXPECT_EQ(view.offset(), 20);
    view.scrollToVisible(500, 700);
    EXPECT_EQ(view.offset(), 500) << "higher than the view: its top";
}

TEST_F(Scrolled, ByItsScroller) {
    const double before = scroller().frame().y;
    const Point<ViewSpace> grip = scroller().boundsInRoot().center();
    surface.router().buttonPressed({MouseButton::Left, grip});
    surface.router().pointerMoved({grip.x, grip.y + 500});
    EXPECT_EQ(view.offset(), 900) << "down to the end, and no further";
    EXPECT_LE(scroller().frame().maxY(), 100);
    surface.router().pointerMoved(grip);
    EXPECT_NEAR(view.offset(), 0, 1e-9);
    EXPECT_EQ(scroller().frame().y, before);
    surface.router().buttonReleased({MouseButton::Left, grip});
    surface.router().pointerMoved({grip.x, grip.y + 50});
    EXPECT_NEAR(view.offset(), 0, 1e-9);
}

TEST_F(Scrolled, ByAHostOfItsOwn) {
    view.leaveScrollingToHost();
    EXPECT_EQ(view.subviews().size(), 1u) << "a scroller beside the system's";
    EXPECT_FALSE(view.scrollWheel({{10, 10}, 1}));
    view.scrolled(120);
    EXPECT_EQ(view.visibleRect(), (Rect<ViewSpace>{0, 120, 200, 100}));
}

TEST(TextField, TellsOnlyOfWhatAPersonChanged) {
    TextField field("Search");
    int changes = 0;
    field.onChange = [&] { ++changes; };
    field.setText("by the program");
    field.edited("by the program");
    EXPECT_EQ(changes, 0);
    field.edited("by a person");
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(field.commanded(TextCommand::Confirm)) << "nobody uses it";
}

}  // namespace
}  // namespace morvel::ui
