// Panels that slide, strips that wait for the pointer, and bars that hide at a whole Mac's edges.
#include "Animations.h"
#include "App/AppDelegate.h"
#include "Application.h"
#include "Drags.h"
#include "MacDesktop.h"
#include "Platform/Mac/MacHost.h"
#include "Platform/Mac/System/MacMainLoop.h"
#include "Platform/Mac/UI/MacToolkit.h"
#include "Platform/Mac/UI/ViewTree.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Properties.h"
#include "RuntimeTest.h"
#include "UI/Panel.h"

namespace morvel::mac::checked {
namespace {

using namespace std::chrono_literals;

void pointAt(CGPoint location) {
    runtime().script("NSEvent", "+mouseLocation", [location](Invocation& i) { i.answer<CGPoint>(location); });
}

/// Tells each view below that follows the pointer and fills its window, as the window server finds tracking areas.
void tellPointer(const NSView& content, const char* selector) {
    const objc::AutoreleasePool pool;
    std::vector<NSView> views = content.subviews().elements<NSView>();
    views.push_back(content);
    for (const NSView& view : views) {
        if (view.trackingAreas().count() == 0 || view.bounds() != content.bounds()) continue;
        const Id event = mouseEvent(NSEventTypeLeftMouseDragged, {10, 1});
        objc::sendRaw<void, Id>(view.raw(), objc::sel_registerName(selector), event);
    }
}

class PanelSlides : public RuntimeTest {
protected:
    NSWindow window() const { return NSWindow(ViewTree::nativeOf(content).window().raw()); }

    MacMainLoop loop;
    MacToolkit toolkit{loop};
    ui::View content;
    ui::Panel panel{toolkit, {.frame = {0, 0, 400, 32}}, content};
};

TEST_F(PanelSlides, ToItsFrameUntilAnotherTakesOver) {
    const objc::AutoreleasePool pool;
    panel.animateFrame({0, -32, 400, 32}, 200ms);
    EXPECT_TRUE(isSliding(window()));
    EXPECT_EQ(slideDuration(window()), 0.2);
    EXPECT_EQ(window().frame(), (CGRect{{0, 0}, {400, 32}})) << "it starts from where it is";
    panel.animateFrame({0, 0, 400, 32}, 200ms);
    EXPECT_EQ(slideTarget(window()), (CGRect{{0, 0}, {400, 32}}));
    panel.setFrame({100, 0, 400, 32});
    EXPECT_FALSE(isSliding(window())) << "it would end elsewhere";
    EXPECT_EQ(window().frame(), (CGRect{{100, 0}, {400, 32}}));
}

TEST_F(PanelSlides, TheSystemMayMoveItButNotKeepItThere) {
    const objc::AutoreleasePool pool;
    constexpr Rect<ScreenSpace> kShown{0, 0, 400, 32};
    const CGRect elsewhere{{600, 300}, {400, 32}};
    window().setFrame(elsewhere, true);  // as after displays were rearranged
    panel.setFrame(kShown);
    EXPECT_EQ(window().frame(), (CGRect{{0, 0}, {400, 32}}));
    const auto moves = [] { return std::ranges::count(runtime().callNames(), "MorvelPanel setFrame:display:"); };
    const auto before = moves();
    panel.setFrame(kShown);
    EXPECT_EQ(moves(), before) << "it is there";

    panel.animateFrame({0, -32, 400, 32}, 200ms);
    panel.setFrame({0, -32, 400, 32});
    EXPECT_TRUE(isSliding(window())) << "it is on its way there";
    dispatch().runFor(200ms);
    finishSlide(window());
    window().setFrame(elsewhere, true);
    panel.setFrame({0, -32, 400, 32});
    EXPECT_EQ(window().frame(), (CGRect{{0, -32}, {400, 32}}));
}

TEST_F(PanelSlides, AStripTakesThePointerThoughItIsClear) {
    const objc::AutoreleasePool pool;
    struct Counting : ui::View {
        bool tracksHover() const override { return true; }
        void mouseEntered(const ui::MouseEvent&) override { ++entered; }
        int entered = 0;
    } view;
    const ui::Panel strip(toolkit, {.frame = {0, 0, 400, 2}, .kind = ui::PanelKind::Strip}, view);
    const NSView native = ViewTree::nativeOf(view);
    ASSERT_TRUE(native.window().raw()->properties.contains("ignoresMouseEvents"));
    EXPECT_FALSE(property<bool>(native.window().raw(), "ignoresMouseEvents"));
    EXPECT_FALSE(window().raw()->properties.contains("ignoresMouseEvents")) << "a bar lets pass what it does not show";
    tellPointer(native, "mouseEntered:");
    EXPECT_EQ(view.entered, 1);
}

TEST_F(PanelSlides, ThePointerAtTheVeryTopIsOnTheDisplay) {
    pointAt({720, 900});
    constexpr Rect<ScreenSpace> kTopBar{0, 876, 1440, 24};
    EXPECT_TRUE(kTopBar.contains(toolkit.pointerLocation().value()));
    pointAt({720, 876});
    EXPECT_FALSE(kTopBar.contains(toolkit.pointerLocation().value()));

    EXPECT_FALSE(toolkit.isMouseButtonDown());
    runtime().script("NSEvent", "+pressedMouseButtons", [](Invocation& i) { i.answer<NSUInteger>(2); });
    EXPECT_TRUE(toolkit.isMouseButtonDown());
    EXPECT_FALSE(toolkit.reducesMotion());
    runtime().script("NSWorkspace", "accessibilityDisplayShouldReduceMotion",
                     [](Invocation& i) { i.answer<bool>(true); });
    EXPECT_TRUE(toolkit.reducesMotion());
}

class AutoHideHost : public RuntimeTest {
protected:
    void run(const std::function<void()>& story) {
        const objc::AutoreleasePool pool;
        pointAt({700, 400});
        MacHost host;
        host.platform().defaults.set("autoHide", DefaultsValue(true));
        morvel::AppDelegate application(host.platform());
        whileRunning([&] {
            dispatch().runFor(1s);
            story();
            dispatch().runFor(0s);
        });
        host.run({.launched = [&] { application.applicationDidFinishLaunching(); },
                  .quitting = [&] { application.applicationWillTerminate(); }});
    }
    static std::vector<NSPanel> panels(bool areStrips) {
        std::vector<NSPanel> found = MacDesktop::bars();
        std::erase_if(found, [&](const NSPanel& panel) { return (panel.frame().size.height == 2) != areStrips; });
        return found;
    }
    static NSPanel bar() { return panels(false).at(0); }
    static double shownAt() { return slideTarget(bar()).origin.y; }

    MacDesktop mac;
};

TEST_F(AutoHideHost, ABarComesToThePointerAndGoes) {
    mac.launch(42, "Editor");
    mac.open(42, "notes.txt", {100, 100});
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
        EXPECT_EQ(property<NSUInteger>(areas.at(0).raw(), "options"), kFollowsMoves);
        tellPointer(strip.contentView(), "mouseMoved:");
        EXPECT_TRUE(isSliding(bar()));
        EXPECT_EQ(shownAt(), 0);
        EXPECT_FALSE(strip.isVisible());
        finishSlide(bar());
        pointAt({700, 20});
        tellPointer(bar().contentView(), "mouseEntered:");
        dispatch().runFor(10s);
        EXPECT_EQ(shownAt(), 0);

        // The menu is up, and the program's loop with it, for as long as the person likes.
        whenMenuPopsUp([&](const NSMenu&) {
            tellPointer(bar().contentView(), "mouseExited:");
            dispatch().runFor(10s);
            EXPECT_EQ(shownAt(), 0);
        });
        ASSERT_TRUE(MacDesktop::rightClickButton(bar().contentView(), "notes.txt"));
        pointAt({700, 400});
        tellPointer(bar().contentView(), "mouseExited:");
        dispatch().runFor(999ms);
        EXPECT_EQ(shownAt(), 0);
        dispatch().runFor(1ms);
        EXPECT_EQ(shownAt(), hidden);
        finishSlide(bar());
        EXPECT_TRUE(strip.isVisible());
    });
}

TEST_F(AutoHideHost, AFileAtTheEdgeBringsTheBarAndHoldsIt) {
    mac.launch(42, "Editor");
    mac.open(42, "notes.txt", {100, 100});
    run([&] {
        const double hidden = shownAt();
        DragOver drag(makeFiles({"/tmp/picture.png"}));
        drag.moveTo(panels(true).at(0).contentView(), {700, 1});
        EXPECT_EQ(shownAt(), 0);
        finishSlide(bar());
        drag.moveTo(bar().contentView(), {700, 20});
        dispatch().runFor(10s);
        EXPECT_EQ(shownAt(), 0);
        drag.end();
        dispatch().runFor(1s);
        EXPECT_EQ(shownAt(), hidden);
    });
}

}  // namespace
}  // namespace morvel::mac::checked
