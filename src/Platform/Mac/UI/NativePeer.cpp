// Making native views, and putting the views' properties into them.
#include "Platform/Mac/UI/NativePeer.h"

#include "Platform/Mac/Icons/MacImage.h"
#include "Platform/Mac/UI/DisplayText.h"
#include "Platform/Mac/UI/FieldDelegate.h"
#include "Platform/Mac/UI/NativeView.h"
#include "Platform/Mac/UI/Resolving.h"
#include "Platform/Mac/UI/ViewTree.h"
#include "Platform/Mac/apple/AppKit/NSControls.h"
#include "Platform/Mac/apple/AppKit/NSScrollView.h"
#include "Platform/Mac/apple/Foundation/NSNotificationCenter.h"
#include "UI/ImageView.h"
#include "UI/Label.h"
#include "UI/ScrollView.h"
#include "UI/TextField.h"
#include "UI/VisualEffectView.h"

namespace morvel::mac {

namespace {

/// A text field keeps this much room on either side of its text. It gets it beyond the label's frame, as that is
/// exactly as wide as the text and would show an ellipsis otherwise.
constexpr double kTextFieldPadding = 2;

NSView makeLabel(const ui::Label& label) {
    const NSTextField field = NSTextField::label(NSString::from({}));
    field.setFont(nsFont(label.font()));
    field.setLineBreakMode(NSLineBreakByTruncatingTail);
    const bool isCentred = label.alignment() == ui::TextAlignment::Center;
    field.setAlignment(isCentred ? NSTextAlignmentCenter : NSTextAlignmentNatural);
    return NSView(field.raw());
}

NSView makeImageView(const ui::ImageView& image) {
    const NSImageView view = NSImageView::make({});
    const bool fits = image.scaling() == ui::ImageScaling::Fit;
    view.setImageScaling(fits ? NSImageScaleProportionallyUpOrDown : NSImageScaleNone);
    return NSView(view.raw());
}

static_assert(NSInteger(ui::Material::Popover) == NSVisualEffectMaterialPopover);
static_assert(NSInteger(ui::Material::Sidebar) == NSVisualEffectMaterialSidebar);
static_assert(NSInteger(ui::Material::HUDWindow) == NSVisualEffectMaterialHUDWindow);

NSView makeEffectView(const ui::VisualEffectView& effect) {
    const NSVisualEffectView view = NSVisualEffectView::make({});
    view.setMaterial(static_cast<NSInteger>(effect.material()));
    view.setBlendingMode(NSVisualEffectBlendingModeBehindWindow);
    view.setState(NSVisualEffectStateActive);
    return NSView(view.raw());
}

NSView makeTextField(const ui::TextField& field) {
    const NSTextField native = NSTextField::make({});
    native.setBezelStyle(NSTextFieldRoundedBezel);
    native.setUsesSingleLineMode(true);
    native.setFont(nsFont(field.font()));
    native.setPlaceholderString(NSString::from(field.placeholder()));
    return NSView(native.raw());
}

NSView makeScrollView() {
    const NSScrollView view = NSScrollView::make({});
    view.setHasVerticalScroller(true);
    view.setAutohidesScrollers(true);
    view.setDrawsBackground(false);
    // Beyond its ends there is nothing that the views could be told to be at.
    view.setVerticalScrollElasticity(NSScrollElasticityNone);
    view.contentView().setPostsBoundsChanged(true);
    return NSView(view.raw());
}

/// Empty for what is not spoken of.
NSString roleOf(ui::AccessibilityRole role) {
    switch (role) {
        case ui::AccessibilityRole::Button:
            return NSString(NSAccessibilityButtonRole);
        case ui::AccessibilityRole::List:
            return NSString(NSAccessibilityListRole);
        case ui::AccessibilityRole::ListItem:
            return NSString(NSAccessibilityGroupRole);
        case ui::AccessibilityRole::None:
            break;
    }
    return {};
}

NSView makeNative(ui::View& view) {
    switch (view.kind()) {
        case ui::View::Kind::Label:
            return makeLabel(static_cast<const ui::Label&>(view));
        case ui::View::Kind::Image:
            return makeImageView(static_cast<const ui::ImageView&>(view));
        case ui::View::Kind::VisualEffect:
            return makeEffectView(static_cast<const ui::VisualEffectView&>(view));
        case ui::View::Kind::TextField:
            return makeTextField(static_cast<const ui::TextField&>(view));
        case ui::View::Kind::Scroll:
            return makeScrollView();
        case ui::View::Kind::Plain:
            break;
    }
    return NativeView::make(view);
}

}  // namespace

NativePeer::NativePeer(ui::View& view) : kind_(view.kind()), native_(makeNative(view)) {
    // AppKit's image views are destinations of drags by themselves and would hide what is under them.
    if (kind_ != ui::View::Kind::Plain) native_.unregisterDraggedTypes();
    native_.setWantsLayer(true);
    if (kind_ == ui::View::Kind::TextField) {
        const NSTextField field(native_.raw());
        delegate_ = FieldDelegate::make(static_cast<ui::TextField&>(view), field);
        field.setDelegate(delegate_);
    } else if (kind_ == ui::View::Kind::Scroll) {
        auto& scroll = static_cast<ui::ScrollView&>(view);
        scroll.leaveScrollingToHost();
        const NSClipView clip = NSScrollView(native_.raw()).contentView();
        scrolled_ = NSNotificationCenter::defaultCenter().observe(
            NSString(NSViewBoundsDidChangeNotification), clip,
            [&scroll, clip](const NSNotification&) { scroll.scrolled(clip.bounds().origin.y); });
    }
    showFrame(view);
    showVisibility(view);
    showLook(view);
    showContent(view);
    showTexts(view);
}

NativePeer::~NativePeer() {
    if (kind_ == ui::View::Kind::Plain) {
        if (NativeView* const own = NativeView::of(native_)) own->forgetView();
    } else if (kind_ == ui::View::Kind::TextField) {
        FieldDelegate::forgetField(delegate_);
        NSTextField(native_.raw()).setDelegate({});
    }
}

void NativePeer::showFrame(const ui::View& view) const {
    CGRect frame = cgRect(view.frame());
    if (kind_ == ui::View::Kind::Label) {
        frame.origin.x -= kTextFieldPadding;
        frame.size.width += 2 * kTextFieldPadding;
    }
    if (!view.parent() || view.parent()->kind() != ui::View::Kind::Scroll) return native_.setFrame(frame);
    native_.setFrame({{}, frame.size});
    const NSScrollView scroll(ViewTree::nativeOf(*view.parent()).raw());
    const NSClipView clip = scroll.contentView();
    const double offset = -view.frame().y;
    if (clip.bounds().origin.y == offset) return;
    clip.scrollTo({0, offset});
    scroll.reflectScrolled(clip);
}

void NativePeer::addSubview(const NSView& child) const {
    if (kind_ == ui::View::Kind::Scroll) return NSScrollView(native_.raw()).setDocumentView(child);
    native_.addSubview(child);
}

void NativePeer::showVisibility(const ui::View& view) const {
    native_.setHidden(view.isHidden());
    native_.setAlphaValue(view.alpha());
}

void NativePeer::showLook(const ui::View& view) const {
    const CALayer layer = native_.layer();
    layer.setCornerRadius(view.cornerRadius());
    layer.setBorderWidth(view.borderWidth());
    native_.setClipsToBounds(view.clipsToBounds());
    native_.effectiveAppearance().performAsCurrentDrawingAppearance([&] {
        const auto put = [](const ui::Color& color) { return color.isClear() ? NSColor() : nsColor(color); };
        layer.setBackgroundColor(put(view.background()).cgColor());
        layer.setBorderColor(put(view.borderColor()).cgColor());
    });
}

void NativePeer::showContent(const ui::View& view) const {
    if (kind_ == ui::View::Kind::Label) {
        const auto& label = static_cast<const ui::Label&>(view);
        NSTextField(native_.raw()).setStringValue(NSString::from(displayText(label.text())));
    } else if (kind_ == ui::View::Kind::TextField) {
        const NSTextField field(native_.raw());
        const std::string& text = static_cast<const ui::TextField&>(view).text();
        // What was typed is there already, and setting it again would move the caret.
        if (field.stringValue().text() != text) field.setStringValue(NSString::from(displayText(text)));
    } else if (kind_ == ui::View::Kind::Image) {
        NSImageView(native_.raw()).setImage(MacImage::imageOf(static_cast<const ui::ImageView&>(view).image()));
    }
    native_.effectiveAppearance().performAsCurrentDrawingAppearance([&] {
        if (kind_ == ui::View::Kind::Label) {
            NSTextField(native_.raw()).setTextColor(nsColor(static_cast<const ui::Label&>(view).color()));
        } else if (kind_ == ui::View::Kind::Image) {
            // Only template images, as symbols are, take the tint.
            NSImageView(native_.raw()).setContentTintColor(nsColor(static_cast<const ui::ImageView&>(view).tint()));
        }
    });
}

void NativePeer::showTexts(const ui::View& view) const {
    const auto text = [](const std::string& utf8) {
        return utf8.empty() ? NSString() : NSString::from(displayText(utf8));
    };
    native_.setToolTip(text(view.tooltip()));
    native_.setAccessibilityLabel(text(view.accessibilityLabel()));
    // What is a mere part of something is looked through, and stock views say by themselves what they are.
    const NSString role = roleOf(view.accessibilityRole());
    if (!role) return;
    native_.setAccessibilityElement(true);
    native_.setAccessibilityRole(role);
}

void NativePeer::resolveColors(const ui::View& view) const {
    showLook(view);
    showContent(view);
}

}  // namespace morvel::mac
