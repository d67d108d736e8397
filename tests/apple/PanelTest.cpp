// Panels on AppKit: windows that never take the focus, that slide, and strips that wait for the pointer.
#include "Animations.h"
#include "Platform/Mac/apple/CoreGraphics.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "ToolkitFixture.h"

namespace morvel::mac::checked {
namespace {

class Panels : public ToolkitFixture {
protected:
    NSWindow window() const { return windowOf(content); }
    static long moves() { return callsOf("MorvelPanel setFrame:display:"); }

    static constexpr Rect<ScreenSpace> kShown{0, 0, 400, 32}, kHidden{0, -32, 400, 32};
    ui::View content;
    ui::Panel panel{toolkit, {.frame = kShown}, content};
    const objc::AutoreleasePool pool;
};

TEST_F(Panels, NeverTakeTheFocus) {
    EXPECT_EQ(window().frame(), (CGRect{{0, 0}, {400, 32}}));
    EXPECT_EQ(property<NSUInteger>(window(), "styleMask"), 128U);
    EXPECT_EQ(property<NSInteger>(window(), "level"), CGWindowLevelForKey(9));
    EXPECT_EQ(property<NSUInteger>(window(), "collectionBehavior"), 64U);
    for (const char* off : {"hasShadow", "opaque", "hidesOnDeactivate", "movable", "releasedWhenClosed"}) {
        ASSERT_TRUE(window().raw()->properties.contains(off)) << off;
        EXPECT_FALSE(property<bool>(window(), off)) << off;
    }
    EXPECT_TRUE(property<bool>(window(), "acceptsMouseMovedEvents"));
    EXPECT_FALSE(send<bool>(window(), "canBecomeKeyWindow"_sel));
    EXPECT_FALSE(send<bool>(window(), "canBecomeMainWindow"_sel));

    EXPECT_FALSE(window().isVisible());
    panel.orderFront();
    EXPECT_TRUE(window().isVisible());
    panel.setFrame({0, 868, 400, 30});
    EXPECT_EQ(window().frame(), (CGRect{{0, 868}, {400, 30}}));
    EXPECT_EQ(native(content).frame(), (CGRect{{0, 0}, {400, 30}}));
}

TEST_F(Panels, ThatGoTakeTheirWindowsAway) {
    NSWindow gone;
    {
        ui::View inside;
        ui::Panel other(toolkit, {.frame = {0, 0, 10, 10}}, inside);
        other.orderFront();
        gone = windowOf(inside);
        ASSERT_TRUE(gone.isVisible());
    }
    EXPECT_FALSE(gone.isVisible());
    EXPECT_FALSE(gone.contentView());
}

TEST_F(Panels, SlideUntilAnotherFrameTakesOver) {
    panel.animateFrame(kHidden, 200ms);
    EXPECT_TRUE(isSliding(window()));
    EXPECT_EQ(slideDuration(window()), 0.2);
    EXPECT_EQ(window().frame(), (CGRect{{0, 0}, {400, 32}})) << "it starts from where it is";
    panel.animateFrame(kShown, 200ms);
    EXPECT_EQ(slideTarget(window()), (CGRect{{0, 0}, {400, 32}}));
    panel.setFrame({100, 0, 400, 32});
    EXPECT_FALSE(isSliding(window())) << "it would end elsewhere";
    EXPECT_EQ(window().frame(), (CGRect{{100, 0}, {400, 32}}));
}

TEST_F(Panels, MayBeMovedByTheSystemButNotKeptThere) {
    const CGRect elsewhere{{600, 300}, {400, 32}};
    window().setFrame(elsewhere, true);  // as after displays were rearranged
    panel.setFrame(kShown);
    EXPECT_EQ(window().frame(), (CGRect{{0, 0}, {400, 32}}));
    const auto before = moves();
    panel.setFrame(kShown);
    EXPECT_EQ(moves(), before) << "it is there";

    panel.animateFrame(kHidden, 200ms);
    panel.setFrame(kHidden);
    EXPECT_TRUE(isSliding(window())) << "it is on its way there";
    dispatch().runFor(200ms);
    finishSlide(window());
    window().setFrame(elsewhere, true);
    panel.setFrame(kHidden);
    EXPECT_EQ(window().frame(), (CGRect{{0, -32}, {400, 32}}));
}

TEST_F(Panels, ThatAreStripsTakeThePointerThoughTheyAreClear) {
    ui::View view;
    const ui::Panel strip(toolkit, {.frame = {0, 0, 400, 2}, .kind = ui::PanelKind::Strip}, view);
    ASSERT_TRUE(windowOf(view).raw()->properties.contains("ignoresMouseEvents"));
    EXPECT_FALSE(property<bool>(windowOf(view), "ignoresMouseEvents"));
    EXPECT_FALSE(window().raw()->properties.contains("ignoresMouseEvents")) << "a bar lets pass what it does not show";
}

TEST_F(Panels, HaveThePointerAtTheVeryTopOfTheirDisplay) {
    constexpr Rect<ScreenSpace> kTopBar{0, 876, 1440, 24};
    answer("NSEvent", "+mouseLocation", CGPoint{720, 900});
    EXPECT_TRUE(kTopBar.contains(toolkit.pointerLocation().value()));
    answer("NSEvent", "+mouseLocation", CGPoint{720, 876});
    EXPECT_FALSE(kTopBar.contains(toolkit.pointerLocation().value()));

    EXPECT_FALSE(toolkit.isMouseButtonDown());
    answer("NSEvent", "+pressedMouseButtons", NSUInteger{2});
    EXPECT_TRUE(toolkit.isMouseButtonDown());
    EXPECT_FALSE(toolkit.reducesMotion());
    answer("NSWorkspace", "accessibilityDisplayShouldReduceMotion", true);
    EXPECT_TRUE(toolkit.reducesMotion());
}

}  // namespace
}  // namespace morvel::mac::checked
