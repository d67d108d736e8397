// Bars that hide at a whole Mac's edges until the pointer or a dragged file comes.
#include "Animations.h"
#include "HostStory.h"
#include "Platform/Mac/System/MacDefaults.h"

namespace morvel::mac::checked {
namespace {

class AutoHideHost : public HostStory {
protected:
    AutoHideHost() {
        pointAt({700, 400});
        MacDefaults().set("autoHide", {true});
        mac.launch(42, "Editor");
        mac.open(42, "notes.txt", {100, 100});
    }
    static void pointAt(CGPoint location) { answer("NSEvent", "+mouseLocation", location); }
    /// Tells each view of the panel that follows the pointer and fills it, as the window server finds tracking areas.
    static void tellPointer(const NSPanel& panel, const char* selector) {
        const objc::AutoreleasePool pool;
        const NSView content = panel.contentView();
        auto views = content.subviews().elements<NSView>();
        views.push_back(content);
        for (const NSView& view : views)
            if (view.trackingAreas().count() > 0 && view.bounds() == content.bounds())
                tell(view, selector, mouseEvent(NSEventTypeLeftMouseDragged, {10, 1}));
    }
    static std::vector<NSPanel> panels(bool areStrips) {
        std::vector<NSPanel> found = MacDesktop::bars();
        std::erase_if(found, [&](const NSPanel& panel) { return (panel.frame().size.height == 2) != areStrips; });
        return found;
    }
    static NSPanel bar() { return panels(false).at(0); }
    static double shownAt() { return slideTarget(bar()).origin.y; }
};

TEST_F(AutoHideHost, ABarComesToThePointerAndGoes) {
    run([&] {
        ASSERT_EQ(panels(false).size(), 2U);
        ASSERT_EQ(panels(true).size(), 2U);
        const double hidden = bar().frame().origin.y;
        EXPECT_EQ(hidden, -bar().frame().size.height);
        const NSPanel strip = panels(true).at(0);
        EXPECT_EQ(strip.frame(), (CGRect{{0, 0}, {bar().frame().size.width, 2}}));

        // The pointer was there before the strip, so it enters nothing.
        constexpr NSUInteger kFollowsMoves = 641 | 2;
        const auto areas = strip.contentView().trackingAreas().elements<NSTrackingArea>();
        EXPECT_EQ(property<NSUInteger>(areas.at(0), "options"), kFollowsMoves);
        tellPointer(strip, "mouseMoved:");
        EXPECT_TRUE(isSliding(bar()));
        EXPECT_EQ(shownAt(), 0);
        EXPECT_FALSE(strip.isVisible());
        finishSlide(bar());
        pointAt({700, 20});
        tellPointer(bar(), "mouseEntered:");
        wait(10s);
        EXPECT_EQ(shownAt(), 0);

        // The menu is up, and the program's loop with it, for as long as the person likes.
        whenMenuPopsUp([&](const NSMenu&) {
            tellPointer(bar(), "mouseExited:");
            wait(10s);
            EXPECT_EQ(shownAt(), 0);
        });
        MacDesktop::rightClickButton(bar().contentView(), "notes.txt");
        pointAt({700, 400});
        tellPointer(bar(), "mouseExited:");
        wait(999ms);
        EXPECT_EQ(shownAt(), 0);
        wait(1ms);
        EXPECT_EQ(shownAt(), hidden);
        finishSlide(bar());
        EXPECT_TRUE(strip.isVisible());
    });
}

TEST_F(AutoHideHost, AFileAtTheEdgeBringsTheBarAndHoldsIt) {
    run([&] {
        const double hidden = shownAt();
        DragOver drag(makeFiles({"/tmp/picture.png"}));
        drag.moveTo(panels(true).at(0).contentView(), {700, 1});
        EXPECT_EQ(shownAt(), 0);
        finishSlide(bar());
        drag.moveTo(bar().contentView(), {700, 20});
        wait(10s);
        EXPECT_EQ(shownAt(), 0);
        drag.end();
        wait(1s);
        EXPECT_EQ(shownAt(), hidden);
    });
}

}  // namespace
}  // namespace morvel::mac::checked
