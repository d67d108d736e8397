// The AppKit toolkit: what views look like as native views, and what AppKit's events do to them.
#include "Platform/Mac/Icons/MacImage.h"
#include "Platform/Mac/UI/DisplayText.h"
#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Platform/Mac/apple/CoreGraphics.h"
#include "ToolkitFixture.h"
#include "UI/ImageView.h"
#include "UI/Label.h"
#include "UI/VisualEffectView.h"

namespace morvel::mac::checked {
namespace {

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

TEST_F(Toolkit, TheApplicationTakesTheChosenAppearance) {
    const auto name = [] {
        const Id appearance(property<RawObject>(NSApplication::shared().raw(), "appearance"));
        return appearance ? send<NSString>(appearance, "name"_sel).text() : "";
    };
    toolkit.setAppearance(ui::Appearance::Dark);
    EXPECT_EQ(name(), "NSAppearanceNameDarkAqua");
    toolkit.setAppearance(ui::Appearance::Light);
    EXPECT_EQ(name(), "NSAppearanceNameAqua");
    toolkit.setAppearance(ui::Appearance::System);
    EXPECT_EQ(name(), "") << "none of its own";
    EXPECT_FALSE(panelWindow().raw()->properties.contains("appearance")) << "so it follows the application's";
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
    EXPECT_EQ(notes, Texts{"first pressed"});
    EXPECT_FALSE(property<RawObject>(native(row).raw(), "accessibilityRole")) << "containers are no buttons";
    first.setTooltip("");
    EXPECT_FALSE(property<RawObject>(raw, "toolTip"));
    struct List : ui::View {
        ui::AccessibilityRole accessibilityRole() const override { return ui::AccessibilityRole::List; }
    } list;
    row.addSubview(list);
    EXPECT_EQ(textOf(property<RawObject>(native(list).raw(), "accessibilityRole")), "AXList");
    EXPECT_FALSE(send<bool>(native(list), "accessibilityPerformPress"_sel));
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
