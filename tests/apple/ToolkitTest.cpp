// The AppKit toolkit: what views look like as native views, and what AppKit's events do to them.
#include "Appearance.h"
#include "Events.h"
#include "Platform/Mac/Icons/MacImage.h"
#include "Platform/Mac/UI/DisplayText.h"
#include "Platform/Mac/UI/MacToolkit.h"
#include "Platform/Mac/UI/ViewTree.h"
#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Platform/Mac/apple/AppKit/NSWindow.h"
#include "Platform/Mac/apple/CoreGraphics.h"
#include "Properties.h"
#include "RuntimeTest.h"
#include "UI/ImageView.h"
#include "UI/Label.h"
#include "UI/Panel.h"
#include "UI/Popover.h"
#include "UI/VisualEffectView.h"

namespace morvel::mac::checked {
namespace {

using Texts = std::vector<std::string>;

/// Posts go to the fake dispatch queue in the real loop; here they wait until the test runs them.
class PostedWork : public MainLoop {
public:
    Instant now() const override { return {}; }
    void post(std::function<void()> work) override { work_.push_back(std::move(work)); }
    Timer after(Duration, std::function<void()>) override { return {}; }
    Timer every(Duration, Duration, std::function<void()>) override { return {}; }
    void run() {
        for (const auto& work : std::exchange(work_, {})) work();
    }

private:
    std::vector<std::function<void()>> work_;
};

/// A button that notes what it is told, and may leave its parent when pressed.
struct Button : ui::View {
    explicit Button(Texts& shared, std::string itsName) : notes(shared), name(std::move(itsName)) {}
    bool acceptsMouse() const override { return true; }
    bool tracksHover() const override { return true; }
    void mouseDown(const ui::MouseEvent& event) override {
        note("down", event);
        if (leavesWhenPressed) removeFromParent();
    }
    void mouseDragged(const ui::MouseEvent& event) override { note("dragged", event); }
    void mouseUp(const ui::MouseEvent& event) override { note("up", event); }
    void rightMouseDown(const ui::MouseEvent& event) override {
        note("right", event);
        if (onRightClick) onRightClick(event);
    }
    void mouseEntered(const ui::MouseEvent& event) override { note("entered", event); }
    void mouseExited() override { notes.push_back(name + " exited"); }
    void note(const std::string& what, const ui::MouseEvent& event) {
        notes.push_back(name + " " + what + " " + std::to_string(int(event.location.x)) + "," +
                        std::to_string(int(event.location.y)));
    }

    Texts& notes;
    std::string name;
    bool leavesWhenPressed = false;
    std::function<void(const ui::MouseEvent&)> onRightClick;
};

/// A root that stacks its subviews from the left, 100 points wide each.
struct Row : ui::View {
    int layouts = 0;

protected:
    void layout() override {
        ++layouts;
        double x = 0;
        for (ui::View* view : subviews()) {
            view->setFrame({x, 4, 90, 24});
            x += 100;
        }
    }
};

class Toolkit : public RuntimeTest {
protected:
    static NSView native(const ui::View& view) { return ViewTree::nativeOf(view); }
    static std::vector<NSView> nativeChildren(const ui::View& view) {
        return native(view).subviews().elements<NSView>();
    }
    static std::string background(const ui::View& view) {
        return describe(property<CGColorRef>(native(view).layer().raw(), "backgroundColor"));
    }
    NSPanel panelWindow() const { return NSPanel(native(row).window()); }
    void show() {
        panel.orderFront();
        display(native(row));
    }

    PostedWork loop;
    MacToolkit toolkit{loop};
    Row row;
    ui::Panel panel{toolkit, {.frame = {0, 0, 400, 32}}, row};
    Texts notes;
    Button first{notes, "first"};
    Button second{notes, "second"};
};

TEST_F(Toolkit, PanelsNeverTakeTheFocus) {
    const NSPanel window = panelWindow();
    const RawObject raw = window.raw();
    EXPECT_EQ(window.frame(), (CGRect{{0, 0}, {400, 32}}));
    EXPECT_EQ(property<NSUInteger>(raw, "styleMask"), 128U);
    EXPECT_EQ(property<NSInteger>(raw, "level"), CGWindowLevelForKey(9));
    EXPECT_EQ(property<NSUInteger>(raw, "collectionBehavior"), 64U);
    for (const char* off : {"hasShadow", "opaque", "hidesOnDeactivate", "movable", "releasedWhenClosed"}) {
        ASSERT_TRUE(raw->properties.contains(off)) << off;
        EXPECT_FALSE(property<bool>(raw, off)) << off;
    }
    EXPECT_TRUE(property<bool>(raw, "acceptsMouseMovedEvents"));
    EXPECT_FALSE(send<bool>(window, "canBecomeKeyWindow"_sel));
    EXPECT_FALSE(send<bool>(window, "canBecomeMainWindow"_sel));
    EXPECT_EQ(property<NSUInteger>(native(row).raw(), "autoresizingMask"), 18U);

    EXPECT_FALSE(window.isVisible());
    panel.orderFront();
    EXPECT_TRUE(window.isVisible());
    runtime().forgetCalls();
    panel.setFrame({0, 868, 400, 30});
    EXPECT_EQ(window.frame(), (CGRect{{0, 868}, {400, 30}}));
    EXPECT_EQ(native(row).frame(), (CGRect{{0, 0}, {400, 30}}));
    window.setFrame({{0, 0}, {500, 30}}, true);
    runtime().forgetCalls();
    panel.setFrame({0, 0, 500, 30});
    EXPECT_EQ(std::ranges::count(runtime().callNames(), "MorvelPanel setFrame:display:"), 0) << "it is there already";
}

TEST_F(Toolkit, APanelThatGoesTakesItsWindowAway) {
    row.addSubview(first);
    NSPanel window;
    {
        Row content;
        ui::Panel other(toolkit, {.frame = {0, 0, 10, 10}}, content);
        other.orderFront();
        window = NSPanel(native(content).window());
        ASSERT_TRUE(window.isVisible());
    }
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(window.contentView());
    EXPECT_FALSE(row.subviews().empty());
}

TEST_F(Toolkit, NativeViewsFollowTheTree) {
    row.addSubview(first);
    row.addSubview(second);
    EXPECT_EQ(nativeChildren(row), (std::vector{native(first), native(second)}));
    Button behind(notes, "behind");
    row.insertSubview(behind, 0);
    Button between(notes, "between");
    row.insertSubview(between, 2);
    EXPECT_EQ(nativeChildren(row), (std::vector{native(behind), native(first), native(between), native(second)}));
    runtime().forgetCalls();
    row.insertSubview(second, 0);
    EXPECT_EQ(nativeChildren(row), (std::vector{native(second), native(behind), native(first), native(between)}));
    for (const std::string& name : runtime().callNames())
        EXPECT_EQ(name.find("removeFromSuperview"), std::string::npos) << "a view that moves keeps its hover";
    const NSView gone = native(between);
    between.removeFromParent();
    EXPECT_FALSE(native(between));
    EXPECT_FALSE(gone.superview());
    EXPECT_EQ(nativeChildren(row).size(), 3U);

    ui::View inner;
    first.addSubview(inner);
    first.removeFromParent();
    EXPECT_FALSE(native(inner)) << "what it contains leaves with it";
    row.addSubview(first);
    EXPECT_EQ(nativeChildren(first), std::vector{native(inner)}) << "and comes back with it";
    first.setHidden(true);
    first.setAlpha(0.6);
    EXPECT_TRUE(property<bool>(native(first).raw(), "hidden"));
    EXPECT_EQ(property<double>(native(first).raw(), "alphaValue"), 0.6);
}

TEST_F(Toolkit, LayoutRunsOncePerDisplay) {
    show();
    const int before = row.layouts;
    row.addSubview(first);
    row.addSubview(second);
    first.setNeedsLayout();
    EXPECT_EQ(row.layouts, before) << "not at once";
    display(native(row));
    EXPECT_EQ(row.layouts, before + 1);
    EXPECT_EQ(native(second).frame(), (CGRect{{100, 4}, {90, 24}}));
    display(native(row));
    EXPECT_EQ(row.layouts, before + 1);
    panel.setFrame({0, 0, 600, 32});
    display(native(row));
    EXPECT_EQ(row.layouts, before + 2);
}

TEST_F(Toolkit, LabelsImagesAndBackgroundsAreNative) {
    ui::Label label(toolkit, {.size = 12, .weight = ui::FontWeight::Semibold}, ui::TextAlignment::Center);
    ui::ImageView picture;
    ui::VisualEffectView effect(ui::Material::HUDWindow);
    row.addSubview(effect);
    row.addSubview(label);
    row.addSubview(picture);
    label.setText("two\nlines \xFF");
    label.setFrame({10, 0, 60, 15});
    picture.setImage(MacImage::from(NSImage::symbol(NSString::from("xmark"))));
    picture.setTint(ui::kSystemRedColor);

    const NSTextField field = objc::as<NSTextField>(native(label));
    EXPECT_EQ(field.stringValue().text(), "two lines \uFFFD");
    EXPECT_EQ(field.frame(), (CGRect{{8, 0}, {64, 15}})) << "room for the field's own padding";
    EXPECT_EQ(property<NSUInteger>(field.raw(), "lineBreakMode"), NSLineBreakByTruncatingTail);
    EXPECT_EQ(property<NSInteger>(field.raw(), "alignment"), NSTextAlignmentCenter);
    EXPECT_EQ(describe(NSColor(Id(property<RawObject>(field.raw(), "textColor"))).cgColor()),
              "labelColor under NSAppearanceNameAqua");
    EXPECT_EQ(property<double>(property<RawObject>(field.raw(), "font"), "weight"), NSFontWeightSemibold);
    const RawObject image = objc::as<NSImageView>(native(picture)).raw();
    EXPECT_EQ(property<RawObject>(image, "image"), MacImage::imageOf(picture.image()).raw());
    EXPECT_EQ(property<NSUInteger>(image, "imageScaling"), NSImageScaleProportionallyUpOrDown);
    EXPECT_EQ(describe(NSColor(Id(property<RawObject>(image, "contentTintColor"))).cgColor()),
              "systemRedColor under NSAppearanceNameAqua");
    picture.setImage(nullptr);
    EXPECT_FALSE(property<RawObject>(image, "image"));
    const RawObject blur = objc::as<NSVisualEffectView>(native(effect)).raw();
    EXPECT_EQ(property<NSInteger>(blur, "material"), 13);
    EXPECT_EQ(property<NSInteger>(blur, "blendingMode"), 0);
    EXPECT_EQ(property<NSInteger>(blur, "state"), 1);
}

TEST_F(Toolkit, ColoursFollowTheAppearance) {
    row.addSubview(first);
    first.setBackground(ui::kLabelColor.withAlpha(0.18));
    first.setBorder(0.5, ui::kLabelColor.withAlpha(0.1));
    first.setCornerRadius(4);
    second.setBackground(ui::customColor({1, 0.5, 0, 0.5}).withAlpha(0.2));
    row.addSubview(second);
    const RawObject layer = native(first).layer().raw();
    EXPECT_EQ(background(first), "labelColor 0.18 under NSAppearanceNameAqua");
    EXPECT_EQ(describe(property<CGColorRef>(layer, "borderColor")), "labelColor 0.1 under NSAppearanceNameAqua");
    EXPECT_EQ(property<double>(layer, "borderWidth"), 0.5);
    EXPECT_EQ(property<double>(layer, "cornerRadius"), 4);
    EXPECT_EQ(background(second), "sRGB 1 0.5 0 0.1 under NSAppearanceNameAqua");

    setAppearance(native(row), "NSAppearanceNameDarkAqua");
    EXPECT_EQ(background(first), "labelColor 0.18 under NSAppearanceNameDarkAqua");
    runtime().forgetCalls();
    post(Center::Default, NSSystemColorsDidChangeNotification, nullptr);
    EXPECT_GE(std::ranges::count(runtime().callNames(), "CALayer setBackgroundColor:"), 3) << "the accent changed";
    first.setBackground(ui::kClear);
    EXPECT_EQ(background(first), "");
    row.setClipsToBounds(true);
    EXPECT_TRUE(property<bool>(native(row).raw(), "clipsToBounds"));
}

TEST_F(Toolkit, PressesReachTheViewUnderThePointer) {
    row.addSubview(first);
    row.addSubview(second);
    ui::Label label(toolkit);
    second.addSubview(label);
    label.setFrame({0, 0, 90, 24});
    show();
    const NSView content = native(row);
    // The window's y grows upwards: 5 from its bottom is 27 from the top of a 32 point bar.
    click(content, {10, 5});
    EXPECT_EQ(std::exchange(notes, {}), (Texts{"first down 10,27", "first up 10,27"}));
    click(content, {150, 20});
    EXPECT_EQ(std::exchange(notes, {}), (Texts{"second down 150,12", "second up 150,12"})) << "through its label";
    click(content, {95, 20});
    EXPECT_EQ(std::exchange(notes, {}), Texts{}) << "between the buttons";
    first.setHidden(true);
    click(content, {10, 20});
    EXPECT_EQ(std::exchange(notes, {}), Texts{});
    first.setHidden(false);

    const NSView target = native(first);
    send(target, "mouseDown:"_sel, NSEvent(mouseEvent(NSEventTypeLeftMouseDown, {10, 20})));
    send(target, "mouseDragged:"_sel, NSEvent(mouseEvent(NSEventTypeLeftMouseDragged, {300, 60})));
    send(target, "mouseUp:"_sel, NSEvent(mouseEvent(NSEventTypeLeftMouseUp, {300, 60})));
    EXPECT_EQ(std::exchange(notes, {}), (Texts{"first down 10,12", "first dragged 300,-28", "first up 300,-28"}));
    send(target, "mouseUp:"_sel, NSEvent(mouseEvent(NSEventTypeLeftMouseUp, {10, 20})));
    EXPECT_EQ(notes, Texts{}) << "a release without its press";
    EXPECT_TRUE(send<bool>(target, "acceptsFirstMouse:"_sel, NSEvent()));

    sendMouse(content, "rightMouseDown:", mouseEvent(NSEventTypeRightMouseDown, {10, 20}));
    const Id withControl = mouseEvent(NSEventTypeLeftMouseDown, {10, 20});
    setProperty(withControl.raw(), "modifierFlags", NSEventModifierFlagControl);
    sendMouse(content, "mouseDown:", withControl);
    EXPECT_EQ(notes, (Texts{"first right 10,12", "first right 10,12"}));
}

TEST_F(Toolkit, AViewMayLeaveInsideItsHandler) {
    row.addSubview(first);
    show();
    first.leavesWhenPressed = true;
    click(native(row), {10, 20});
    EXPECT_EQ(notes, Texts{"first down 10,12"}) << "its native view is told of the release and passes nothing on";
    row.addSubview(first);
    display(native(row));
    EXPECT_TRUE(send<bool>(native(first), "accessibilityPerformPress"_sel));
    EXPECT_EQ(notes.size(), 2U);
}

TEST_F(Toolkit, HoverIsTrackedInOneReplacedArea) {
    row.addSubview(first);
    ui::View plain;
    row.addSubview(plain);
    show();
    for (int times = 0; times < 3; ++times) {
        send(native(first), "updateTrackingAreas"_sel);
        send(native(plain), "updateTrackingAreas"_sel);
    }
    const auto areas = native(first).trackingAreas().elements<NSTrackingArea>();
    ASSERT_EQ(areas.size(), 1U);
    EXPECT_EQ(property<NSUInteger>(areas[0].raw(), "options"), 641U);
    EXPECT_EQ(property<RawObject>(areas[0].raw(), "owner"), native(first).raw());
    EXPECT_EQ(native(plain).trackingAreas().count(), 0U);
    const NSEvent event(mouseEvent(NSEventTypeLeftMouseDragged, {10, 20}));
    send(native(first), "mouseEntered:"_sel, event);
    send(native(first), "mouseExited:"_sel, event);
    EXPECT_EQ(notes, (Texts{"first entered 10,12", "first exited"}));
}

TEST_F(Toolkit, ButtonsSpeakAndCanBePressedWithoutAPointer) {
    row.addSubview(first);
    first.setTooltip("Editor — notes.txt");
    first.setAccessibilityLabel("notes.txt");
    show();
    const RawObject raw = native(first).raw();
    EXPECT_EQ(textOf(property<RawObject>(raw, "toolTip")), "Editor — notes.txt");
    EXPECT_EQ(textOf(property<RawObject>(raw, "accessibilityLabel")), "notes.txt");
    EXPECT_EQ(textOf(property<RawObject>(raw, "accessibilityRole")), "AXButton");
    EXPECT_TRUE(property<bool>(raw, "accessibilityElement"));
    EXPECT_TRUE(send<bool>(native(first), "accessibilityPerformPress"_sel));
    EXPECT_EQ(notes, (Texts{"first down 45,16", "first up 45,16"}));
    EXPECT_FALSE(property<RawObject>(native(row).raw(), "accessibilityRole")) << "containers are no buttons";
    first.setTooltip("");
    EXPECT_FALSE(property<RawObject>(raw, "toolTip"));
}

TEST_F(Toolkit, MenusAreBuiltShownAndChosenFrom) {
    row.addSubview(first);
    show();
    Texts done;
    const auto add = [&](std::string text) { return [&done, text] { done.push_back(text); }; };
    const ui::Menu menu = {{.title = "Close Window", .action = add("close")},
                           ui::MenuItem::separator(),
                           {.title = "Unavailable"},
                           {.title = "Move to Display", .submenu = {{.title = "Left", .action = add("left")}}},
                           {.title = "Quit Morvel", .action = add("quit"), .keyEquivalent = "q"}};
    first.onRightClick = [&](const ui::MouseEvent& event) {
        toolkit.popUpMenu(menu, first, event.location, add("closed"));
    };
    whenMenuPopsUp([&](const NSMenu& shown) {
        ASSERT_EQ(shown.items().count(), 5U);
        EXPECT_FALSE(choose(itemTitled(shown, "Unavailable")));
        EXPECT_EQ(textOf(property<RawObject>(itemTitled(shown, "Quit Morvel").raw(), "keyEquivalent")), "q");
        const NSMenu submenu(Id(property<RawObject>(itemTitled(shown, "Move to Display").raw(), "submenu")));
        EXPECT_TRUE(choose(itemTitled(submenu, "Left")));
    });
    runtime().forgetCalls();
    sendMouse(native(row), "rightMouseDown:", mouseEvent(NSEventTypeRightMouseDown, {10, 20}));
    EXPECT_EQ(std::exchange(done, {}), (Texts{"left", "closed"}));
    EXPECT_EQ(std::ranges::count(runtime().callNames(), "NSMenu popUpContextMenu:withEvent:forView:"), 1);

    whenMenuPopsUp([&](const NSMenu&) { row.removeFromParent(), first.removeFromParent(); });
    toolkit.popUpMenu(menu, first, {10, 12}, add("closed"));
    EXPECT_EQ(std::exchange(done, {}), Texts{"closed"}) << "without an event, nothing chosen, and the anchor gone";
    EXPECT_EQ(std::ranges::count(runtime().callNames(), "NSMenu popUpMenuPositioningItem:atLocation:inView:"), 1);
    toolkit.popUpMenu(menu, first, {10, 12}, add("closed"));
    EXPECT_EQ(done, Texts{"closed"}) << "an anchor that is not shown";
}

TEST_F(Toolkit, PopoversOpenMoveAndClose) {
    row.addSubview(first);
    row.addSubview(second);
    show();
    Row list;
    Button inside(notes, "inside");
    list.addSubview(inside);
    int closings = 0;
    ui::Popover popover(toolkit, list, [&] { ++closings; });
    popover.show(first, ui::Edge::Top, {280, 72});
    const RawObject shown = native(list).window().raw();
    ASSERT_TRUE(shown);
    EXPECT_EQ(native(list).frame().size, (CGSize{280, 72}));
    const auto calls = runtime().calls();
    const auto show = std::ranges::find(calls, "showRelativeToRect:ofView:preferredEdge:", &Call::selector);
    ASSERT_NE(show, calls.end());
    const RawObject raw = show->receiver;
    EXPECT_EQ(property<NSUInteger>(raw, "preferredEdge"), NSRectEdgeMaxY);
    EXPECT_EQ(property<NSInteger>(raw, "behavior"), NSPopoverBehaviorApplicationDefined);
    display(native(list));
    click(native(list), {10, 60});
    EXPECT_EQ(notes, (Texts{"inside down 10,12", "inside up 10,12"}));

    popover.show(second, ui::Edge::Bottom, {280, 36});
    EXPECT_EQ(property<RawObject>(raw, "positioningView"), native(second).raw());
    EXPECT_EQ(property<NSUInteger>(raw, "preferredEdge"), NSRectEdgeMinY);
    popover.resize({280, 108});
    EXPECT_EQ(native(list).frame().size, (CGSize{280, 108}));
    EXPECT_EQ(closings, 0);
    popover.close();
    EXPECT_EQ(closings, 1);
    EXPECT_FALSE(native(list).window());

    second.removeFromParent();
    popover.show(second, ui::Edge::Top, {280, 36});
    EXPECT_EQ(closings, 1) << "never inside show";
    loop.run();
    EXPECT_EQ(closings, 2) << "there is no place beside a view that is not shown";
    EXPECT_FALSE(popover.isShown());
    popover.show(first, ui::Edge::Top, {280, 36});
}

TEST_F(Toolkit, PopoversCloseAtAPressElsewhereAndListsLeaveItToTheirAnchorsWindow) {
    row.addSubview(first);
    row.addSubview(second);
    show();
    for (const ui::PopoverKind kind : {ui::PopoverKind::List, ui::PopoverKind::Controls}) {
        Row list;
        int closings = 0;
        runtime().forgetCalls();
        ui::Popover popover(
            toolkit, list, [&] { ++closings; }, kind);
        popover.show(first, ui::Edge::Top, {280, 72});
        const auto calls = runtime().calls();
        const RawObject raw =
            std::ranges::find(calls, "showRelativeToRect:ofView:preferredEdge:", &Call::selector)->receiver;
        const bool isTransient = kind == ui::PopoverKind::Controls;
        EXPECT_EQ(property<NSInteger>(raw, "behavior") == NSPopoverBehaviorTransient, isTransient);
        EXPECT_EQ(property<bool>(raw, "animates"), isTransient);
        click(native(list), {10, 60});
        click(native(row), {45, 16});
        EXPECT_EQ(closings, 0) << "its anchor decides for itself";
        notes.clear();
        click(native(row), {145, 16});
        EXPECT_EQ(closings, isTransient ? 1 : 0);
        EXPECT_EQ(notes.size(), 2U) << "the press is not lost";
        popover.close();
        EXPECT_EQ(monitorCount(), 0U);
    }
}

TEST_F(Toolkit, PressesElsewhereAreSeenWhileWatched) {
    int presses = 0;
    Subscription watching;
    watching = toolkit.observeOutsidePresses([&] {
        if (++presses == 4) watching.reset();
    });
    for (const NSUInteger type :
         {NSEventTypeLeftMouseDown, NSEventTypeRightMouseDown, NSEventTypeOtherMouseDown, NSEventTypeLeftMouseUp})
        pressElsewhere(type);
    EXPECT_EQ(presses, 3) << "releases are none";
    pressElsewhere(NSEventTypeLeftMouseDown);
    EXPECT_EQ(monitorCount(), 0U) << "ended from inside the handler";
    pressElsewhere(NSEventTypeLeftMouseDown);
    EXPECT_EQ(presses, 4);
}

TEST_F(Toolkit, PromptsAreTitledWindowsInFront) {
    int presses = 0;
    std::unique_ptr<ui::PromptPeer> prompt;
    runtime().forgetCalls();
    prompt = toolkit.showPrompt({.title = "Morvel — Accessibility Required",
                                 .contentSize = {480, 220},
                                 .text = "Morvel needs…",
                                 .textFrame = {20, 30, 440, 110},
                                 .buttonTitle = "Open System Settings…",
                                 .buttonFrame = {280, 170, 180, 30},
                                 .pressed = [&] {
                                     if (++presses == 2) prompt.reset();
                                 }});
    const auto calls = runtime().calls();
    const auto shown = std::ranges::find(calls, "makeKeyAndOrderFront:", &Call::selector);
    ASSERT_NE(shown, calls.end());
    const NSWindow window{Id(shown->receiver)};
    Texts order;
    for (const Call& call : calls) {
        if (call.selector == "center" || call.selector == "makeKeyAndOrderFront:" ||
            call.selector == "activateIgnoringOtherApps:")
            order.push_back(call.selector);
    }
    EXPECT_EQ(order, (Texts{"center", "makeKeyAndOrderFront:", "activateIgnoringOtherApps:"}));
    EXPECT_EQ(property<NSUInteger>(window.raw(), "styleMask"), 3U);
    EXPECT_EQ(window.frame().size, (CGSize{480, 220}));
    EXPECT_EQ(textOf(property<RawObject>(window.raw(), "title")), "Morvel — Accessibility Required");
    EXPECT_FALSE(property<bool>(window.raw(), "releasedWhenClosed"));
    const auto parts = window.contentView().subviews().elements<NSView>();
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0].frame(), (CGRect{{20, 80}, {440, 110}}));
    EXPECT_EQ(parts[1].frame(), (CGRect{{280, 20}, {180, 30}}));
    const RawObject button = parts[1].raw();
    EXPECT_EQ(textOf(property<RawObject>(button, "keyEquivalent")), "\r");
    const auto press = [&] {
        const Id target(property<RawObject>(button, "target"));
        objc::sendRaw<void, Id>(target.raw(), property<RawSelector>(button, "action"), Id(button));
    };
    press();
    EXPECT_EQ(presses, 1);
    EXPECT_TRUE(window.isVisible());
    press();
    EXPECT_FALSE(window.isVisible()) << "closed from inside its button";
    EXPECT_EQ(presses, 2);
}

TEST_F(Toolkit, TextIsMeasuredAsItIsShown) {
    EXPECT_EQ(toolkit.textSize("abc", {}), (Size{20, 15})) << "whole points";
    EXPECT_EQ(toolkit.textSize("", {}).width, 0);
    EXPECT_EQ(toolkit.textSize("a\xFFz", {}), toolkit.textSize("a\uFFFDz", {}));
    struct Case {
        const char* why;
        std::string given, shown;
    };
    for (const Case& r : {Case{"valid text stays", "é €😀", "é €😀"},
                          {"overlong", "\xC0\xAF", "\uFFFD\uFFFD"},
                          {"a surrogate", "\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
                          {"cut off", "a\xE2\x82", "a\uFFFD\uFFFD"},
                          {"beyond the last character", "\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
                          {"control characters", std::string("a\0b\tc\x7F", 6), "a b c "}})
        EXPECT_EQ(displayText(r.given), r.shown) << r.why;
    EXPECT_EQ(displayText(std::string(1 << 20, 'x')).size(), 1000U);
}

}  // namespace
}  // namespace morvel::mac::checked
