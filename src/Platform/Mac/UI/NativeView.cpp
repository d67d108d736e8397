// The methods of MorvelView. Handlers may take the view away, so each is the last thing its method does with it.
#include "Platform/Mac/UI/NativeView.h"

#include <cmath>
#include <utility>

#include "Platform/Mac/UI/MacDragPasteboard.h"
#include "Platform/Mac/UI/ViewTree.h"
#include "Platform/Mac/apple/AppKit/Selectors.h"

namespace morvel::mac {

namespace {

using Class = objc::Subclass<NativeView>;

/// Also reports moves that the window server alone sees, while no window of ours is active, and follows the view's
/// visible part without being told of its size.
constexpr NSUInteger kTrackingOptions =
    NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways | NSTrackingInVisibleRect;
static_assert(kTrackingOptions == 641);

constexpr NSInteger kMiddleButton = 2;

/// How far fingers move on a touchpad for what a notch of a wheel does: a finger's width needs several.
constexpr double kPointsPerNotch = 30;

/// How far the wheel was turned, as `ui::WheelEvent` counts; 0 for what is no turn on purpose. A scroll that runs on by
/// itself is none, nor is one that goes mostly sideways.
double notchesOf(const NSEvent& event) {
    const double down = -event.scrollingDeltaY();
    if (event.momentumPhase() != NSEventPhaseNone || std::abs(event.scrollingDeltaX()) > std::abs(down)) return 0;
    if (event.hasPreciseScrollingDeltas()) return down / kPointsPerNotch;
    // The lines of a wheel are scaled by its speed, from a tenth for a slow notch upwards; each event is one notch.
    return down > 0 ? 1 : down < 0 ? -1 : 0;
}

/// The outermost scroll view between the two; null for none.
const ui::View* scrollViewAround(const ui::View& inner, const ui::View& outer) {
    const ui::View* found = nullptr;
    for (const ui::View* view = &inner; view && view != &outer; view = view->parent())
        if (view->kind() == ui::View::Kind::Scroll) found = view;
    return found;
}

NSUInteger nsOperation(ui::DragOperation operation) {
    switch (operation) {
        case ui::DragOperation::Copy:
            return NSDragOperationCopy;
        case ui::DragOperation::Move:
            return NSDragOperationMove;
        case ui::DragOperation::None:
            break;
    }
    return NSDragOperationNone;
}

}  // namespace

void NativeView::ensureRegistered() {
    [[maybe_unused]] static const objc::RawClass registered =
        Class("NSView")
            .overrides<&NativeView::isFlipped>(selectors::isFlipped)
            .overrides<&NativeView::acceptsFirstMouse>(selectors::acceptsFirstMouse)
            .overrides<&NativeView::hitTest>(selectors::hitTest)
            .overrides<&NativeView::mouseDown>(selectors::mouseDown)
            .overrides<&NativeView::mouseDragged>(selectors::mouseDragged)
            .overrides<&NativeView::mouseUp>(selectors::mouseUp)
            .overrides<&NativeView::rightMouseDown>(selectors::rightMouseDown)
            .overrides<&NativeView::otherMouseDown>(selectors::otherMouseDown)
            .overrides<&NativeView::otherMouseDragged>(selectors::otherMouseDragged)
            .overrides<&NativeView::otherMouseUp>(selectors::otherMouseUp)
            .overrides<&NativeView::scrollWheel>(selectors::scrollWheel)
            .overrides<&NativeView::mouseEntered>(selectors::mouseEntered)
            .overrides<&NativeView::mouseExited>(selectors::mouseExited)
            .overrides<&NativeView::mouseMoved>(selectors::mouseMoved)
            .overrides<&NativeView::updateTrackingAreas>(selectors::updateTrackingAreas)
            .overrides<&NativeView::layout>(selectors::layout)
            .overrides<&NativeView::viewDidChangeEffectiveAppearance>(selectors::viewDidChangeEffectiveAppearance)
            .overrides<&NativeView::accessibilityPerformPress>(selectors::accessibilityPerformPress)
            .overrides<&NativeView::draggingEntered>(selectors::draggingEntered)
            .overrides<&NativeView::draggingUpdated>(selectors::draggingUpdated)
            .overrides<&NativeView::draggingExited>(selectors::draggingExited)
            .overrides<&NativeView::prepareForDragOperation>(selectors::prepareForDragOperation)
            .overrides<&NativeView::performDragOperation>(selectors::performDragOperation)
            .overrides<&NativeView::draggingEnded>(selectors::draggingEnded)
            .registered();
}

NSView NativeView::make(ui::View& view) {
    ensureRegistered();
    return Class::create<NSView>(std::make_unique<NativeView>(view), selectors::initWithFrame, CGRect{});
}

NativeView* NativeView::of(const NSView& native) {
    return Class::of(native);
}

NSView NativeView::hitTest(objc::Self self, CGPoint pointInSuperview) {
    if (!view_) return {};
    const NSView own(self.object);
    const CGPoint point = own.convertPointFrom(pointInSuperview, own.superview());
    ui::View* const hit = view_->hitTest({point.x, point.y});
    if (!hit) return {};
    // The system's scroller lies over the document and is no view of ours.
    if (const ui::View* const scroll = scrollViewAround(*hit, *view_)) {
        const NSView native = ViewTree::nativeOf(*scroll);
        return native.hitTest(native.superview().convertPointFrom(point, own));
    }
    return ViewTree::nativeOf(*hit);
}

ui::EventRouter& NativeView::router() const {
    return static_cast<ViewTree*>(view_->host())->router();
}

Point<ViewSpace> NativeView::inRoot(objc::Self self, CGPoint inWindow) const {
    const CGPoint own = NSView(self.object).convertPointFrom(inWindow, NSView());
    const Rect<ViewSpace> bounds = view_->boundsInRoot();
    return {own.x + bounds.x, own.y + bounds.y};
}

ui::MouseEvent NativeView::eventOf(objc::Self self, ui::MouseButton button, const NSEvent& event) const {
    return {button, inRoot(self, event.locationInWindow())};
}

void NativeView::mouseDown(objc::Self self, NSEvent event) {
    if (!view_ || !view_->acceptsMouse()) return self.super(selectors::mouseDown, event);
    // A left click with Control is the right click of those who have one button.
    if (event.modifierFlags() & NSEventModifierFlagControl) return rightMouseDown(self, event);
    pressed_ = ui::MouseButton::Left;
    view_->mouseDown(eventOf(self, ui::MouseButton::Left, event));
}

void NativeView::mouseDragged(objc::Self self, NSEvent event) {
    drag(self, event);
}

void NativeView::mouseUp(objc::Self self, NSEvent event) {
    release(self, event);
}

void NativeView::rightMouseDown(objc::Self self, NSEvent event) {
    if (!view_ || !view_->acceptsMouse()) return self.super(selectors::rightMouseDown, event);
    view_->rightMouseDown(eventOf(self, ui::MouseButton::Right, event));
}

void NativeView::otherMouseDown(objc::Self self, NSEvent event) {
    if (!view_ || !view_->acceptsMouse()) return self.super(selectors::otherMouseDown, event);
    if (event.buttonNumber() != kMiddleButton) return;
    pressed_ = ui::MouseButton::Middle;
    view_->mouseDown(eventOf(self, ui::MouseButton::Middle, event));
}

void NativeView::otherMouseDragged(objc::Self self, NSEvent event) {
    drag(self, event);
}

void NativeView::otherMouseUp(objc::Self self, NSEvent event) {
    release(self, event);
}

void NativeView::drag(objc::Self self, const NSEvent& event) {
    if (view_ && pressed_) view_->mouseDragged(eventOf(self, *pressed_, event));
}

void NativeView::release(objc::Self self, const NSEvent& event) {
    if (!view_ || !pressed_) return;
    const ui::MouseButton button = *std::exchange(pressed_, std::nullopt);
    view_->mouseUp(eventOf(self, button, event));
}

void NativeView::scrollWheel(objc::Self self, NSEvent event) {
    const double notches = view_ ? notchesOf(event) : 0;
    const bool isUsed = notches != 0 && router().wheelTurned({inRoot(self, event.locationInWindow()), notches});
    if (!isUsed) self.super(selectors::scrollWheel, event);
}

void NativeView::mouseEntered(objc::Self self, NSEvent event) {
    if (view_) view_->mouseEntered(eventOf(self, ui::MouseButton::Left, event));
}

void NativeView::mouseExited(objc::Self, NSEvent) {
    if (view_) view_->mouseExited();
}

void NativeView::mouseMoved(objc::Self self, NSEvent event) {
    if (!view_ || !view_->tracksMoves()) return self.super(selectors::mouseMoved, event);
    view_->mouseMoved(eventOf(self, ui::MouseButton::Left, event));
}

void NativeView::updateTrackingAreas(objc::Self self) {
    self.super(selectors::updateTrackingAreas);
    const NSView own(self.object);
    if (trackingArea_) own.removeTrackingArea(std::exchange(trackingArea_, {}));
    if (!view_ || !view_->tracksHover()) return;
    const NSUInteger options = view_->tracksMoves() ? kTrackingOptions | NSTrackingMouseMoved : kTrackingOptions;
    trackingArea_ = NSTrackingArea::make(own.bounds(), options, own);
    own.addTrackingArea(trackingArea_);
}

void NativeView::layout(objc::Self self) {
    self.super(selectors::layout);
    if (view_ && !view_->parent()) view_->layoutIfNeeded();
}

void NativeView::viewDidChangeEffectiveAppearance(objc::Self self) {
    self.super(selectors::viewDidChangeEffectiveAppearance);
    // The whole tree has one appearance: its root answers for all.
    if (view_ && !view_->parent()) ViewTree::resolveColors(*view_);
}

bool NativeView::accessibilityPerformPress() {
    return view_ && view_->accessibilityPress();
}

NSUInteger NativeView::draggingEntered(objc::Self self, NSDraggingInfo info) {
    return draggingUpdated(self, info);
}

NSUInteger NativeView::draggingUpdated(objc::Self self, NSDraggingInfo info) {
    if (!view_) return NSDragOperationNone;
    const MacDragPasteboard pasteboard(info.draggingPasteboard());
    return nsOperation(router().dragMoved({inRoot(self, info.draggingLocation()), pasteboard}));
}

void NativeView::draggingExited(NSDraggingInfo) {
    if (view_) router().dragExited();
}

bool NativeView::prepareForDragOperation(objc::Self self, NSDraggingInfo info) {
    // Once more, as views may have moved under the pointer since it was moved last.
    return draggingUpdated(self, info) != NSDragOperationNone;
}

bool NativeView::performDragOperation(objc::Self self, NSDraggingInfo info) {
    if (!view_) return false;
    const MacDragPasteboard pasteboard(info.draggingPasteboard());
    const bool isTaken = router().dragDropped({inRoot(self, info.draggingLocation()), pasteboard});
    // The end is promised to the destinations that a drag has left, not to the one it was dropped on.
    if (view_) router().dragEnded();
    return isTaken;
}

void NativeView::draggingEnded(NSDraggingInfo) {
    if (view_) router().dragEnded();
}

}  // namespace morvel::mac
