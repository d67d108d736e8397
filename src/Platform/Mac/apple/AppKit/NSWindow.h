// Windows and panels. Frames are in screen coordinates: origin at the bottom left of the first screen, y upwards.
#pragma once

#include "Platform/Mac/apple/AppKit/NSView.h"

namespace morvel::mac {

inline constexpr NSUInteger NSWindowStyleMaskTitled = 1;
inline constexpr NSUInteger NSWindowStyleMaskClosable = 2;
inline constexpr NSUInteger NSWindowStyleMaskMiniaturizable = 4;
inline constexpr NSUInteger NSWindowStyleMaskNonactivatingPanel = 128;
inline constexpr NSUInteger NSWindowStyleMaskFullSizeContentView = 32768;
inline constexpr NSUInteger NSWindowCollectionBehaviorIgnoresCycle = 64;
inline constexpr NSUInteger NSBackingStoreBuffered = 2;

class NSWindow : public NSObject {
public:
    static constexpr const char* kClass = "NSWindow";
    using NSObject::NSObject;

    static NSWindow make(CGRect content, NSUInteger style) {
        constexpr bool kNotDeferred = false;
        return create<NSWindow>("initWithContentRect:styleMask:backing:defer:"_sel, content, style,
                                NSBackingStoreBuffered, kNotDeferred);
    }
    CGRect frame() const { return send<CGRect>(*this, "frame"_sel); }
    void setFrame(CGRect frame, bool display) const { send(*this, "setFrame:display:"_sel, frame, display); }
    /// Stands for the window: frames that are set on it are reached in the duration of the animation group, in which a
    /// later one takes over from an earlier one.
    NSWindow animator() const { return send<NSWindow>(*this, "animator"_sel); }
    void setTitle(const NSString& title) const { send(*this, "setTitle:"_sel, title); }
    void setTitlebarAppearsTransparent(bool is) const { send(*this, "setTitlebarAppearsTransparent:"_sel, is); }
    void setLevel(NSInteger level) const { send(*this, "setLevel:"_sel, level); }
    void setCollectionBehavior(NSUInteger behavior) const { send(*this, "setCollectionBehavior:"_sel, behavior); }
    void setHasShadow(bool has) const { send(*this, "setHasShadow:"_sel, has); }
    void setOpaque(bool opaque) const { send(*this, "setOpaque:"_sel, opaque); }
    void setBackgroundColor(const NSColor& color) const { send(*this, "setBackgroundColor:"_sel, color); }
    void setHidesOnDeactivate(bool hides) const { send(*this, "setHidesOnDeactivate:"_sel, hides); }
    void setAcceptsMouseMovedEvents(bool accepts) const { send(*this, "setAcceptsMouseMovedEvents:"_sel, accepts); }
    /// Also where the window is clear, once this was said.
    void setIgnoresMouseEvents(bool ignores) const { send(*this, "setIgnoresMouseEvents:"_sel, ignores); }
    void setMovable(bool movable) const { send(*this, "setMovable:"_sel, movable); }
    /// Always false for ours: the wrapper's reference would outlive a window that releases itself.
    void setReleasedWhenClosed(bool released) const { send(*this, "setReleasedWhenClosed:"_sel, released); }
    void setContentView(const NSView& view) const { send(*this, "setContentView:"_sel, view); }
    NSView contentView() const { return send<NSView>(*this, "contentView"_sel); }
    void center() const { send(*this, "center"_sel); }
    void makeKeyAndOrderFront() const { send(*this, "makeKeyAndOrderFront:"_sel, nullptr); }
    /// Tab and Shift-Tab then reach every control in reading order, those that were added later included.
    void setAutorecalculatesKeyViewLoop(bool is) const { send(*this, "setAutorecalculatesKeyViewLoop:"_sel, is); }
    /// Takes the keyboard.
    void makeKey() const { send(*this, "makeKeyWindow"_sel); }
    /// The view that is typed into; whether it took it.
    bool makeFirstResponder(const NSView& view) const { return send<bool>(*this, "makeFirstResponder:"_sel, view); }
    NSUInteger styleMask() const { return send<NSUInteger>(*this, "styleMask"_sel); }
    void setStyleMask(NSUInteger mask) const { send(*this, "setStyleMask:"_sel, mask); }
    void orderFrontRegardless() const { send(*this, "orderFrontRegardless"_sel); }
    void orderOut() const { send(*this, "orderOut:"_sel, nullptr); }
    void close() const { send(*this, "close"_sel); }
    bool isMiniaturized() const { return send<bool>(*this, "isMiniaturized"_sel); }
    void deminiaturize() const { send(*this, "deminiaturize:"_sel, nullptr); }
    bool isVisible() const { return send<bool>(*this, "isVisible"_sel); }
};

class NSPanel : public NSWindow {
public:
    static constexpr const char* kClass = "NSPanel";
    using NSWindow::NSWindow;
};

}  // namespace morvel::mac
