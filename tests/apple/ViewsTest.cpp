// The AppKit toolkit: what views look like as native views, and what AppKit's events do to them.
#include "Appearance.h"
#include "Platform/Mac/Icons/MacImage.h"
#include "Platform/Mac/UI/DisplayText.h"
#include "ToolkitFixture.h"
#include "UI/ImageView.h"
#include "UI/Label.h"
#include "UI/VisualEffectView.h"

namespace morvel::mac::checked {
namespace {

class Views : public BarFixture {
protected:
    static std::vector<NSView> nativeChildren(const ui::View& view) {
        return native(view).subviews().elements<NSView>();
    }
    static std::string color(const NSObject& layer, const char* name) {
        return describe(property<CGColorRef>(layer, name));
    }
    static std::string background(const ui::View& view) { return color(native(view).layer(), "backgroundColor"); }
    /// Of a control's colour, which follows the appearance by itself.
    static std::string described(const NSObject& control, const char* name) {
        return describe(property<NSColor>(control, name).cgColor());
    }
};

TEST_F(Views, FollowTheTree) {
    Button behind(notes, "behind");
    Button between(notes, "between");
    row.addSubview(first);
    row.addSubview(second);
    row.insertSubview(behind, 0);
    row.insertSubview(between, 2);
    EXPECT_EQ(nativeChildren(row), (std::vector{native(behind), native(first), native(between), native(second)}));
    runtime().forgetCalls();
    row.insertSubview(second, 0);
    EXPECT_EQ(nativeChildren(row), (std::vector{native(second), native(behind), native(first), native(between)}));
    EXPECT_EQ(sentOf({"removeFromSuperview"}), Texts{}) << "a view that moves keeps its hover";
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
    EXPECT_TRUE(property<bool>(native(first), "hidden"));
    EXPECT_EQ(property<double>(native(first), "alphaValue"), 0.6);
}

TEST_F(Views, AreLaidOutOncePerDisplay) {
    show({});
    const int before = row.layouts;
    row.addSubview(first);
    row.addSubview(second);
    first.setNeedsLayout();
    EXPECT_EQ(row.layouts, before) << "not at once";
    for (int times = 0; times < 2; ++times) display(native(row));
    EXPECT_EQ(row.layouts, before + 1);
    EXPECT_EQ(native(second).frame(), (CGRect{{100, 4}, {90, 24}}));
    panel.setFrame({0, 0, 600, 32});
    display(native(row));
    EXPECT_EQ(row.layouts, before + 2);
}

TEST_F(Views, OfTextAndPicturesAreTheSystems) {
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

    const auto field = objc::as<NSTextField>(native(label));
    EXPECT_EQ(field.stringValue().text(), "two lines \uFFFD");
    EXPECT_EQ(field.frame(), (CGRect{{8, 0}, {64, 15}})) << "room for the field's own padding";
    EXPECT_EQ(property<NSUInteger>(field, "lineBreakMode"), NSLineBreakByTruncatingTail);
    EXPECT_EQ(property<NSInteger>(field, "alignment"), NSTextAlignmentCenter);
    EXPECT_EQ(described(field, "textColor"), "labelColor under NSAppearanceNameAqua");
    EXPECT_EQ(property<double>(property<RawObject>(field, "font"), "weight"), NSFontWeightSemibold);
    const auto image = objc::as<NSImageView>(native(picture));
    EXPECT_EQ(property<Id>(image, "image"), MacImage::imageOf(picture.image()));
    EXPECT_EQ(property<NSUInteger>(image, "imageScaling"), NSImageScaleProportionallyUpOrDown);
    EXPECT_EQ(described(image, "contentTintColor"), "systemRedColor under NSAppearanceNameAqua");
    picture.setImage(nullptr);
    EXPECT_FALSE(property<Id>(image, "image"));
    const auto blur = objc::as<NSVisualEffectView>(native(effect));
    EXPECT_EQ(property<NSInteger>(blur, "material"), 13);
    EXPECT_EQ(property<NSInteger>(blur, "blendingMode"), 0);
    EXPECT_EQ(property<NSInteger>(blur, "state"), 1);
}

TEST_F(Views, HaveColoursThatFollowTheAppearance) {
    row.addSubview(first);
    row.addSubview(second);
    first.setBackground(ui::kLabelColor.withAlpha(0.18));
    first.setBorder(0.5, ui::kLabelColor.withAlpha(0.1));
    first.setCornerRadius(4);
    second.setBackground(ui::customColor({1, 0.5, 0, 0.5}).withAlpha(0.2));
    const CALayer layer = native(first).layer();
    EXPECT_EQ(background(first), "labelColor 0.18 under NSAppearanceNameAqua");
    EXPECT_EQ(color(layer, "borderColor"), "labelColor 0.1 under NSAppearanceNameAqua");
    EXPECT_EQ(property<double>(layer, "borderWidth"), 0.5);
    EXPECT_EQ(property<double>(layer, "cornerRadius"), 4);
    EXPECT_EQ(background(second), "sRGB 1 0.5 0 0.1 under NSAppearanceNameAqua");

    setAppearance(native(row), "NSAppearanceNameDarkAqua");
    EXPECT_EQ(background(first), "labelColor 0.18 under NSAppearanceNameDarkAqua");
    runtime().forgetCalls();
    post(Center::Default, NSSystemColorsDidChangeNotification, nullptr);
    EXPECT_GE(callsOf("CALayer setBackgroundColor:"), 3) << "the accent changed";
    first.setBackground(ui::kClear);
    EXPECT_EQ(background(first), "");
    row.setClipsToBounds(true);
    EXPECT_TRUE(property<bool>(native(row), "clipsToBounds"));
}

TEST_F(Views, UnderThePointerGetItsPresses) {
    ui::Label label(toolkit);
    second.addSubview(label);
    label.setFrame({0, 0, 90, 24});
    show({&first, &second});
    const NSView content = native(row);
    // The window's y grows upwards: 5 from its bottom is 27 from the top of a 32 point bar.
    click(content, {10, 5});
    EXPECT_EQ(told(), (Texts{"first down 10,27", "first up 10,27"}));
    click(content, {150, 20});
    EXPECT_EQ(told(), (Texts{"second down 150,12", "second up 150,12"})) << "through its label";
    click(content, {95, 20});
    EXPECT_EQ(told(), Texts{}) << "between the buttons";
    first.setHidden(true);
    click(content, {10, 20});
    EXPECT_EQ(told(), Texts{});
    first.setHidden(false);

    const NSView target = native(first);
    tell(target, "mouseDown:", mouseEvent(NSEventTypeLeftMouseDown, {10, 20}));
    tell(target, "mouseDragged:", mouseEvent(NSEventTypeLeftMouseDragged, {300, 60}));
    tell(target, "mouseUp:", mouseEvent(NSEventTypeLeftMouseUp, {300, 60}));
    EXPECT_EQ(told(), (Texts{"first down 10,12", "first dragged 300,-28", "first up 300,-28"}));
    tell(target, "mouseUp:", mouseEvent(NSEventTypeLeftMouseUp, {10, 20}));
    EXPECT_EQ(told(), Texts{}) << "a release without its press";
    EXPECT_TRUE(tell<bool>(target, "acceptsFirstMouse:", NSEvent()));

    sendMouse(content, "rightMouseDown:", mouseEvent(NSEventTypeRightMouseDown, {10, 20}));
    const Id withControl = mouseEvent(NSEventTypeLeftMouseDown, {10, 20});
    setProperty(withControl, "modifierFlags", NSEventModifierFlagControl);
    sendMouse(content, "mouseDown:", withControl);
    EXPECT_EQ(told(), (Texts{"first right 10,12", "first right 10,12"}));
}

TEST_F(Views, MayLeaveInsideTheirHandlers) {
    first.leavesWhenPressed = true;
    show({&first});
    click(native(row), {10, 20});
    EXPECT_EQ(told(), Texts{"first down 10,12"}) << "its native view is told of the release and passes nothing on";
    show({&first});
    EXPECT_TRUE(tell<bool>(native(first), "accessibilityPerformPress"));
    EXPECT_EQ(told(), Texts{"first pressed"});
}

TEST_F(Views, TrackHoverInOneReplacedArea) {
    ui::View plain;
    row.addSubview(plain);
    show({&first});
    for (int times = 0; times < 3; ++times)
        for (const NSView& view : nativeChildren(row)) tell(view, "updateTrackingAreas");
    const auto areas = native(first).trackingAreas().elements<NSTrackingArea>();
    ASSERT_EQ(areas.size(), 1U);
    EXPECT_EQ(property<NSUInteger>(areas[0], "options"), 641U);
    EXPECT_EQ(property<Id>(areas[0], "owner"), native(first));
    EXPECT_EQ(native(plain).trackingAreas().count(), 0U);
    const Id event = mouseEvent(NSEventTypeLeftMouseDragged, {10, 20});
    tell(native(first), "mouseEntered:", event);
    tell(native(first), "mouseExited:", event);
    EXPECT_EQ(told(), (Texts{"first entered 10,12", "first exited"}));
}

TEST_F(Views, SpeakAndCanBePressedWithoutAPointer) {
    struct List : ui::View {
        ui::AccessibilityRole accessibilityRole() const override { return ui::AccessibilityRole::List; }
    } list;
    first.setTooltip("Editor — notes.txt");
    first.setAccessibilityLabel("notes.txt");
    row.addSubview(list);
    show({&first});
    const NSView button = native(first);
    EXPECT_EQ(textProperty(button, "toolTip"), "Editor — notes.txt");
    EXPECT_EQ(textProperty(button, "accessibilityLabel"), "notes.txt");
    EXPECT_EQ(textProperty(button, "accessibilityRole"), "AXButton");
    EXPECT_TRUE(property<bool>(button, "accessibilityElement"));
    EXPECT_TRUE(tell<bool>(button, "accessibilityPerformPress"));
    EXPECT_EQ(told(), Texts{"first pressed"});
    EXPECT_FALSE(property<Id>(native(row), "accessibilityRole")) << "containers are no buttons";
    first.setTooltip("");
    EXPECT_FALSE(property<Id>(button, "toolTip"));
    EXPECT_EQ(textProperty(native(list), "accessibilityRole"), "AXList");
    EXPECT_FALSE(tell<bool>(native(list), "accessibilityPerformPress"));
}

TEST_F(Views, MeasureTextAsTheyShowIt) {
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
