// The NSView behind a plain view: turns what AppKit tells it into the view's handlers.
#pragma once

#include <optional>

#include "Platform/Mac/apple/AppKit/NSDragging.h"
#include "Platform/Mac/apple/AppKit/NSEvent.h"
#include "Platform/Mac/apple/AppKit/NSView.h"
#include "Platform/Mac/objc/Subclass.h"
#include "UI/EventRouter.h"
#include "UI/View.h"

namespace morvel::mac {

/// The C++ half of a `MorvelView` instance, owned by it. The view is shown in a ViewTree. AppKit may keep the instance
/// longer than the view lives; it then answers as an empty view. Flipped, so that frames are the views' own numbers.
class NativeView {
public:
    static constexpr const char* kClassName = "MorvelView";

    static NSView make(ui::View& view);
    /// The C++ half of an instance that `make` made.
    static NativeView* of(const NSView& native);

    explicit NativeView(ui::View& view) : view_(&view) {}
    /// The view is going away; nothing reaches it any more.
    void forgetView() { view_ = nullptr; }

    // What AppKit calls.
    bool isFlipped() { return true; }
    /// The bar is never key, so every press on it is a first one.
    bool acceptsFirstMouse(NSEvent) { return true; }
    NSView hitTest(objc::Self self, CGPoint pointInSuperview);
    void mouseDown(objc::Self self, NSEvent event);
    void mouseDragged(objc::Self self, NSEvent event);
    void mouseUp(objc::Self self, NSEvent event);
    void rightMouseDown(objc::Self self, NSEvent event);
    void otherMouseDown(objc::Self self, NSEvent event);
    void otherMouseDragged(objc::Self self, NSEvent event);
    void otherMouseUp(objc::Self self, NSEvent event);
    void scrollWheel(objc::Self self, NSEvent event);
    void mouseEntered(objc::Self self, NSEvent event);
    void mouseExited(objc::Self self, NSEvent event);
    void mouseMoved(objc::Self self, NSEvent event);
    void updateTrackingAreas(objc::Self self);
    void layout(objc::Self self);
    void viewDidChangeEffectiveAppearance(objc::Self self);
    bool accessibilityPerformPress(objc::Self self);
    // Drags, of which only a root is told.
    NSUInteger draggingEntered(objc::Self self, NSDraggingInfo info);
    NSUInteger draggingUpdated(objc::Self self, NSDraggingInfo info);
    void draggingExited(NSDraggingInfo info);
    bool prepareForDragOperation(objc::Self self, NSDraggingInfo info);
    bool performDragOperation(objc::Self self, NSDraggingInfo info);
    void draggingEnded(NSDraggingInfo info);

private:
    static void ensureRegistered();
    ui::EventRouter& router() const;
    Point<ViewSpace> inRoot(objc::Self self, CGPoint inWindow) const;
    ui::MouseEvent eventOf(objc::Self self, ui::MouseButton button, const NSEvent& event) const;
    void drag(objc::Self self, const NSEvent& event);
    void release(objc::Self self, const NSEvent& event);

    ui::View* view_;                          // null once it is gone
    std::optional<ui::MouseButton> pressed_;  // what the view was told of and awaits the release of
    NSTrackingArea trackingArea_;
};

}  // namespace morvel::mac
