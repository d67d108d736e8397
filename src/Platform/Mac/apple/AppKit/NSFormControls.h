// The controls of a window of settings, and the panels that ask for a place in the file system.
#pragma once

#include <functional>
#include <string>

#include "Platform/Mac/apple/AppKit/NSControls.h"
#include "Platform/Mac/apple/AppKit/NSScrollView.h"
#include "Platform/Mac/apple/AppKit/NSWindow.h"
#include "Platform/Mac/apple/Foundation/NSURL.h"

namespace morvel::mac {

inline constexpr NSInteger NSControlStateValueOff = 0;
inline constexpr NSInteger NSControlStateValueOn = 1;
inline constexpr NSUInteger NSLineBreakByTruncatingMiddle = 5;
inline constexpr NSUInteger NSSegmentSwitchTrackingSelectOne = 0;
inline constexpr NSUInteger NSNoTitle = 0;
inline constexpr NSInteger NSModalResponseOK = 1;

/// The part of a control that knows when its action is due.
class NSCell : public NSObject {
public:
    static constexpr const char* kClass = "NSCell";
    using NSObject::NSObject;

    /// Whether leaving a field counts as using it, as Return does.
    void setSendsActionOnEndEditing(bool sends) const { send(*this, "setSendsActionOnEndEditing:"_sel, sends); }
};

/// What all controls can, labels and buttons included.
class NSControl : public NSView {
public:
    static constexpr const char* kClass = "NSControl";
    using NSView::NSView;

    /// Not retained.
    void setTarget(const Id& target) const { send(*this, "setTarget:"_sel, target); }
    void setAction(Selector action) const { send(*this, "setAction:"_sel, action); }
    void setEnabled(bool enabled) const { send(*this, "setEnabled:"_sel, enabled); }
    double doubleValue() const { return send<double>(*this, "doubleValue"_sel); }
    void setDoubleValue(double value) const { send(*this, "setDoubleValue:"_sel, value); }
    NSCell cell() const { return send<NSCell>(*this, "cell"_sel); }
    /// What it needs at most within this size.
    CGSize sizeThatFits(CGSize size) const { return send<CGSize>(*this, "sizeThatFits:"_sel, size); }
};

class NSSwitch : public NSControl {
public:
    static constexpr const char* kClass = "NSSwitch";
    using NSControl::NSControl;

    static NSSwitch make() { return create<NSSwitch>("initWithFrame:"_sel, CGRect{}); }
    NSInteger state() const { return send<NSInteger>(*this, "state"_sel); }
    void setState(NSInteger state) const { send(*this, "setState:"_sel, state); }
};

class NSPopUpButton : public NSControl {
public:
    static constexpr const char* kClass = "NSPopUpButton";
    using NSControl::NSControl;

    static NSPopUpButton make() {
        constexpr bool kPullsDown = false;
        return create<NSPopUpButton>("initWithFrame:pullsDown:"_sel, CGRect{}, kPullsDown);
    }
    /// An item of the same title would be replaced.
    void addItem(const NSString& title) const { send(*this, "addItemWithTitle:"_sel, title); }
    void select(NSInteger index) const { send(*this, "selectItemAtIndex:"_sel, index); }
    /// -1 for none.
    NSInteger selected() const { return send<NSInteger>(*this, "indexOfSelectedItem"_sel); }
};

class NSSlider : public NSControl {
public:
    static constexpr const char* kClass = "NSSlider";
    using NSControl::NSControl;

    static NSSlider make(double value, double least, double greatest, const Id& target, Selector action) {
        return send<NSSlider>(ClassOf<NSSlider>{}, "sliderWithValue:minValue:maxValue:target:action:"_sel, value, least,
                              greatest, target, action);
    }
};

class NSStepper : public NSControl {
public:
    static constexpr const char* kClass = "NSStepper";
    using NSControl::NSControl;

    static NSStepper make() { return create<NSStepper>("initWithFrame:"_sel, CGRect{}); }
    void setMinValue(double value) const { send(*this, "setMinValue:"_sel, value); }
    void setMaxValue(double value) const { send(*this, "setMaxValue:"_sel, value); }
    void setIncrement(double step) const { send(*this, "setIncrement:"_sel, step); }
    void setValueWraps(bool wraps) const { send(*this, "setValueWraps:"_sel, wraps); }
};

class NSColorSpace : public NSObject {
public:
    static constexpr const char* kClass = "NSColorSpace";
    using NSObject::NSObject;

    static NSColorSpace sRGB() { return send<NSColorSpace>(ClassOf<NSColorSpace>{}, "sRGBColorSpace"_sel); }
};

/// A colour in a space with these components; others raise an exception when they are asked for them.
class NSComponentColor : public NSColor {
public:
    using NSColor::NSColor;

    /// Empty when the colour, as a pattern, has no such form.
    static NSComponentColor of(const NSColor& color, const NSColorSpace& space) {
        return send<NSComponentColor>(color, "colorUsingColorSpace:"_sel, space);
    }
    double red() const { return send<double>(*this, "redComponent"_sel); }
    double green() const { return send<double>(*this, "greenComponent"_sel); }
    double blue() const { return send<double>(*this, "blueComponent"_sel); }
    double alpha() const { return send<double>(*this, "alphaComponent"_sel); }
};

class NSColorWell : public NSControl {
public:
    static constexpr const char* kClass = "NSColorWell";
    using NSControl::NSControl;

    static NSColorWell make() { return create<NSColorWell>("initWithFrame:"_sel, CGRect{}); }
    NSColor color() const { return send<NSColor>(*this, "color"_sel); }
    void setColor(const NSColor& color) const { send(*this, "setColor:"_sel, color); }
};

/// The one panel that every colour well opens.
class NSColorPanel : public NSPanel {
public:
    static constexpr const char* kClass = "NSColorPanel";
    using NSPanel::NSPanel;

    static NSColorPanel shared() { return send<NSColorPanel>(ClassOf<NSColorPanel>{}, "sharedColorPanel"_sel); }
    void setShowsAlpha(bool shows) const { send(*this, "setShowsAlpha:"_sel, shows); }
};

class NSSegmentedControl : public NSControl {
public:
    static constexpr const char* kClass = "NSSegmentedControl";
    using NSControl::NSControl;

    static NSSegmentedControl make(const NSArray& labels, const Id& target, Selector action) {
        return send<NSSegmentedControl>(ClassOf<NSSegmentedControl>{},
                                        "segmentedControlWithLabels:trackingMode:target:action:"_sel, labels,
                                        NSSegmentSwitchTrackingSelectOne, target, action);
    }
    NSInteger selected() const { return send<NSInteger>(*this, "selectedSegment"_sel); }
    void select(NSInteger segment) const { send(*this, "setSelectedSegment:"_sel, segment); }
    void setEnabled(bool enabled, NSInteger segment) const {
        send(*this, "setEnabled:forSegment:"_sel, enabled, segment);
    }
};

class NSSearchField : public NSTextField {
public:
    static constexpr const char* kClass = "NSSearchField";
    using NSTextField::NSTextField;

    static NSSearchField make() { return create<NSSearchField>("initWithFrame:"_sel, CGRect{}); }
    /// Its action comes with each letter, without waiting for a pause.
    void setSendsImmediately(bool sends) const { send(*this, "setSendsSearchStringImmediately:"_sel, sends); }
};

/// A rounded background for what belongs together.
class NSBox : public NSView {
public:
    static constexpr const char* kClass = "NSBox";
    using NSView::NSView;

    static NSBox make() { return create<NSBox>("initWithFrame:"_sel, CGRect{}); }
    void setTitlePosition(NSUInteger position) const { send(*this, "setTitlePosition:"_sel, position); }
};

class NSSavePanel : public NSPanel {
public:
    static constexpr const char* kClass = "NSSavePanel";
    using NSPanel::NSPanel;

    static NSSavePanel make() { return send<NSSavePanel>(ClassOf<NSSavePanel>{}, "savePanel"_sel); }
    void setMessage(const NSString& text) const { send(*this, "setMessage:"_sel, text); }
    void setSuggestedName(const NSString& name) const { send(*this, "setNameFieldStringValue:"_sel, name); }
    /// As a sheet of the window, which waits for it. The response comes in a later turn.
    void begin(const NSWindow& window, std::function<void(NSInteger response)> answered) const {
        send(*this, "beginSheetModalForWindow:completionHandler:"_sel, window,
             Block<void(NSInteger)>(std::move(answered)));
    }
    NSURL url() const { return send<NSURL>(*this, "URL"_sel); }
};

class NSOpenPanel : public NSSavePanel {
public:
    static constexpr const char* kClass = "NSOpenPanel";
    using NSSavePanel::NSSavePanel;

    static NSOpenPanel make() { return send<NSOpenPanel>(ClassOf<NSOpenPanel>{}, "openPanel"_sel); }
    void setCanChooseFiles(bool can) const { send(*this, "setCanChooseFiles:"_sel, can); }
    void setCanChooseDirectories(bool can) const { send(*this, "setCanChooseDirectories:"_sel, can); }
};

}  // namespace morvel::mac
