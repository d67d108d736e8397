// The views with contents of their own: labels, buttons, images, blurred backgrounds.
#pragma once

#include "Platform/Mac/apple/AppKit/NSView.h"

namespace morvel::mac {

inline constexpr NSUInteger NSLineBreakByTruncatingTail = 4;
inline constexpr NSInteger NSTextAlignmentNatural = 4;
#if defined(__APPLE__) && defined(__x86_64__)
inline constexpr NSInteger NSTextAlignmentCenter = 2;
#else
inline constexpr NSInteger NSTextAlignmentCenter = 1;
#endif
inline constexpr NSUInteger NSImageScaleNone = 2;
inline constexpr NSUInteger NSImageScaleProportionallyUpOrDown = 3;
inline constexpr NSUInteger NSTextFieldRoundedBezel = 1;
inline constexpr NSUInteger NSBezelStylePush = 1;
inline constexpr NSUInteger NSImageOnly = 1;
inline constexpr NSInteger NSVisualEffectMaterialPopover = 6;
inline constexpr NSInteger NSVisualEffectMaterialSidebar = 7;
inline constexpr NSInteger NSVisualEffectMaterialHUDWindow = 13;
inline constexpr NSInteger NSVisualEffectBlendingModeBehindWindow = 0;
inline constexpr NSInteger NSVisualEffectStateActive = 1;

class NSTextField : public NSView {
public:
    static constexpr const char* kClass = "NSTextField";
    using NSView::NSView;

    static NSTextField label(const NSString& text) {
        return send<NSTextField>(ClassOf<NSTextField>{}, "labelWithString:"_sel, text);
    }
    /// Editable and empty.
    static NSTextField make(CGRect frame) { return create<NSTextField>("initWithFrame:"_sel, frame); }
    /// Several lines, as many as the text needs in its width.
    static NSTextField wrappingLabel(const NSString& text) {
        return send<NSTextField>(ClassOf<NSTextField>{}, "wrappingLabelWithString:"_sel, text);
    }
    void setStringValue(const NSString& text) const { send(*this, "setStringValue:"_sel, text); }
    NSString stringValue() const { return send<NSString>(*this, "stringValue"_sel); }
    void setFont(const NSFont& font) const { send(*this, "setFont:"_sel, font); }
    void setTextColor(const NSColor& color) const { send(*this, "setTextColor:"_sel, color); }
    void setLineBreakMode(NSUInteger mode) const { send(*this, "setLineBreakMode:"_sel, mode); }
    void setAlignment(NSInteger alignment) const { send(*this, "setAlignment:"_sel, alignment); }
    void setPlaceholderString(const NSString& text) const { send(*this, "setPlaceholderString:"_sel, text); }
    void setBezelStyle(NSUInteger style) const { send(*this, "setBezelStyle:"_sel, style); }
    void setUsesSingleLineMode(bool uses) const { send(*this, "setUsesSingleLineMode:"_sel, uses); }
    /// Not retained.
    void setDelegate(const Id& delegate) const { send(*this, "setDelegate:"_sel, delegate); }
};

class NSImageSymbolConfiguration : public NSObject {
public:
    static constexpr const char* kClass = "NSImageSymbolConfiguration";
    using NSObject::NSObject;

    static NSImageSymbolConfiguration from(double pointSize, double fontWeight) {
        return send<NSImageSymbolConfiguration>(ClassOf<NSImageSymbolConfiguration>{},
                                                "configurationWithPointSize:weight:"_sel, pointSize, fontWeight);
    }
};

class NSImage : public NSObject {
public:
    static constexpr const char* kClass = "NSImage";
    using NSObject::NSObject;

    /// Transparent until drawn into.
    static NSImage empty(CGSize size) { return create<NSImage>("initWithSize:"_sel, size); }
    /// Empty when this system has no such symbol.
    static NSImage symbol(const NSString& name) {
        return send<NSImage>(ClassOf<NSImage>{}, "imageWithSystemSymbolName:accessibilityDescription:"_sel, name,
                             NSString());
    }
    NSImage copy() const { return sendOwned<NSImage>(*this, "copy"_sel); }
    CGSize size() const { return send<CGSize>(*this, "size"_sel); }
    void setSize(CGSize size) const { send(*this, "setSize:"_sel, size); }
    NSImage withConfiguration(const NSImageSymbolConfiguration& configuration) const {
        return send<NSImage>(*this, "imageWithSymbolConfiguration:"_sel, configuration);
    }
    /// A template is a mask that takes the tint of where it is shown.
    bool isTemplate() const { return send<bool>(*this, "isTemplate"_sel); }
    void setTemplate(bool isTemplate) const { send(*this, "setTemplate:"_sel, isTemplate); }
    void addRepresentation(const NSBitmapImageRep& pixels) const { send(*this, "addRepresentation:"_sel, pixels); }
    /// Between these two, drawing goes into this image.
    void lockFocusFlipped(bool flipped) const { send(*this, "lockFocusFlipped:"_sel, flipped); }
    void unlockFocus() const { send(*this, "unlockFocus"_sel); }
    /// Draws the whole image, upright in flipped coordinates too.
    void drawIn(CGRect rectangle) const { send(*this, "drawInRect:"_sel, rectangle); }
};

class NSButton : public NSView {
public:
    static constexpr const char* kClass = "NSButton";
    using NSView::NSView;

    /// The target is not retained.
    static NSButton push(const NSString& title, const Id& target, Selector action) {
        return send<NSButton>(ClassOf<NSButton>{}, "buttonWithTitle:target:action:"_sel, title, target, action);
    }
    void setBezelStyle(NSUInteger style) const { send(*this, "setBezelStyle:"_sel, style); }
    void setKeyEquivalent(const NSString& key) const { send(*this, "setKeyEquivalent:"_sel, key); }
    void setImage(const NSImage& image) const { send(*this, "setImage:"_sel, image); }
    void setImagePosition(NSUInteger position) const { send(*this, "setImagePosition:"_sel, position); }
};

class NSImageView : public NSView {
public:
    static constexpr const char* kClass = "NSImageView";
    using NSView::NSView;

    static NSImageView make(CGRect frame) { return create<NSImageView>("initWithFrame:"_sel, frame); }
    void setImage(const NSImage& image) const { send(*this, "setImage:"_sel, image); }
    void setImageScaling(NSUInteger scaling) const { send(*this, "setImageScaling:"_sel, scaling); }
    void setContentTintColor(const NSColor& color) const { send(*this, "setContentTintColor:"_sel, color); }
};

class NSVisualEffectView : public NSView {
public:
    static constexpr const char* kClass = "NSVisualEffectView";
    using NSView::NSView;

    static NSVisualEffectView make(CGRect frame) { return create<NSVisualEffectView>("initWithFrame:"_sel, frame); }
    void setMaterial(NSInteger material) const { send(*this, "setMaterial:"_sel, material); }
    void setBlendingMode(NSInteger mode) const { send(*this, "setBlendingMode:"_sel, mode); }
    void setState(NSInteger state) const { send(*this, "setState:"_sel, state); }
};

}  // namespace morvel::mac
