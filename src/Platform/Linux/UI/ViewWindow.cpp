#include "Platform/Linux/UI/ViewWindow.h"

#include <utility>

#include "Platform/Linux/UI/Drag/XdndMessages.h"
#include "Platform/Linux/UI/TooltipWindow.h"
#include "Platform/Linux/UI/ViewInspection.h"

namespace morvel::x11 {

namespace {

constexpr Duration kTooltipDelay = std::chrono::milliseconds(600);

// A window manager that is just starting can lose what it is asked: openbox 3.6.1 announces itself on the root window
// and afterwards drops the requests that arrived while it set itself up, so that in about one start of ten beside it
// the bar was never mapped. The first delay is long against an answer of a busy window manager, and asking again does
// no harm where the answer was only slow.
constexpr Duration kMappingDelay = std::chrono::milliseconds(250);
constexpr int kMappingTries = 5;  // each waits twice as long as the one before: eight seconds in all

constexpr xcb_button_t kWheelUp = 4;
constexpr xcb_button_t kWheelDown = 5;

std::optional<ui::MouseButton> mouseButton(xcb_button_t button) {
    switch (button) {
        case 1:
            return ui::MouseButton::Left;
        case 2:
            return ui::MouseButton::Middle;
        case 3:
            return ui::MouseButton::Right;
        default:
            return std::nullopt;  // the wheel and the like
    }
}

}  // namespace

ViewWindow::ViewWindow(ToolkitContext& context, ui::View& root, ViewWindowOptions options)
    : context_(context),
      options_(std::move(options)),
      router_(root),
      registration_(context.registerWindow(*this)),
      canvas_(context.mainLoop(), context.palette(), context.layouts(), root,
              {.paintBackdrop =
                   [this](cairo_t* cr) {
                       const bool isTranslucent = window_->format().isTranslucent;
                       const Palette& palette = context_.palette();
                       if (bubble_) {
                           bubble_->paint(cr, palette.bubble(isTranslucent), palette.bubbleBorder(), isTranslucent);
                           return bubble_->clipToBody(cr);
                       }
                       if (isTranslucent) return;
                       const ui::RGBA color = palette.resolve(ui::kWindowBackgroundColor);
                       cairo_set_source_rgb(cr, color.red, color.green, color.blue);
                       cairo_paint(cr);
                   },
               .present =
                   [this](const std::vector<PaintedPart>& parts) {
                       for (const PaintedPart& part : parts) window_->put(part.pixels.get(), part.at.x, part.at.y);
                   },
               .laidOut = [this] { router_.layoutChanged(); },
               .changedTexts = [this] { describe(); },
               .willDetach = [this](ui::View& view) { willDetach(view); }}) {
    makeWindow();
    compositing_ = context_.compositing().observeChanges([this] {
        const bool wasMapped = window_->isMapped();
        makeWindow();
        if (wasMapped) show();
    });
}

ViewWindow::~ViewWindow() {
    retire();
}

void ViewWindow::makeWindow() {
    const WindowFormat format = options_.isUnseen ? WindowFormat{.isUnseen = true} : context_.compositing().format();
    window_ = std::make_unique<XWindow>(context_.connection(), format, frame_, options_.management);
    events_ =
        context_.connection().observeWindow(window_->id(), [this](const xcb_generic_event_t& event) { handle(event); });
    isPointerInside_ = false;
    canvas_.setComposited(window_->format().isTranslucent);
    canvas_.damageAll();
    // Where something else takes the input, nothing can be dropped.
    if (!options_.input) window_->setCardinals(context_.connection().atoms().xdndAware, XCB_ATOM_ATOM, {kXdndVersion});
    if (options_.prepare) options_.prepare(*window_);
    applyShape();
}

void ViewWindow::setFrame(const PixelRect& frame, Point<ViewSpace> origin, std::optional<Bubble> bubble) {
    frame_ = {frame.x, frame.y, std::max(1, frame.width), std::max(1, frame.height)};
    bubble_ = bubble;
    window_->setFrame(frame_);
    canvas_.setGeometry(frame_.width, frame_.height, origin);
    if (bubble_) canvas_.damageAll();
    applyShape();
    cancelTooltip();
    if (context_.inspectionProperty()) inspect();
}

void ViewWindow::applyShape() {
    if (bubble_ && !window_->format().isTranslucent) window_->setShape(bubble_->coverage(frame_.width, frame_.height));
}

void ViewWindow::show() {
    if (isRetired_) return;
    if (window_->isMapped()) {
        canvas_.paintNow();
        return window_->raise();
    }
    const SurfacePtr picture = canvas_.picture();
    if (isRetired_ || !picture) return;
    window_->map(picture.get());
    if (auto* bridge = context_.accessibility()) bridge->windowChanged(*this);
    if (options_.management == Management::Managed) awaitMapping(kMappingTries);
}

void ViewWindow::awaitMapping(int triesLeft) {
    if (triesLeft == 0) return mapping_.reset();
    const Duration delay = kMappingDelay * (1 << (kMappingTries - triesLeft));
    mapping_ = context_.mainLoop().after(delay, [this, triesLeft] {
        window_->askAgain();
        awaitMapping(triesLeft - 1);
    });
}

void ViewWindow::hide() {
    mapping_.reset();
    cancelTooltip();
    window_->unmap();
    if (auto* bridge = context_.accessibility()) bridge->windowChanged(*this);
    pointerExited();
}

void ViewWindow::retire() {
    if (std::exchange(isRetired_, true)) return;
    keyboard_ = nullptr;
    mapping_.reset();
    cancelTooltip();
    events_.reset();
    compositing_.reset();
    registration_.reset();
    canvas_.release();
    window_->unmap();
}

Rect<RootSpace> ViewWindow::frameOnRoot() const {
    return {static_cast<double>(frame_.x), static_cast<double>(frame_.y), static_cast<double>(frame_.width),
            static_cast<double>(frame_.height)};
}

std::optional<Rect<RootSpace>> ViewWindow::keptFree() const {
    if (options_.keepClearOf == KeepClearOf::Window) return frameOnRoot();
    return std::nullopt;
}

Rect<RootSpace> ViewWindow::onRoot(const ui::View& view) const {
    const Rect<ViewSpace> rect = view.boundsInRoot();
    const Point<RootSpace> corner = onRoot(rect.origin());
    return {corner.x, corner.y, rect.width, rect.height};
}

Point<RootSpace> ViewWindow::onRoot(Point<ViewSpace> inRootView) const {
    return {frame_.x + canvas_.origin().x + inRootView.x, frame_.y + canvas_.origin().y + inRootView.y};
}

Point<ViewSpace> ViewWindow::inRootView(Point<RootSpace> onRoot) const {
    return {onRoot.x - frame_.x - canvas_.origin().x, onRoot.y - frame_.y - canvas_.origin().y};
}

void ViewWindow::handle(const xcb_generic_event_t& event) {
    if (isRetired_) return;
    switch (typeOf(event)) {
        case XCB_EXPOSE:
            exposed(reinterpret_cast<const xcb_expose_event_t&>(event));
            break;
        case XCB_MAP_NOTIFY:
            mapping_.reset();
            if (keyboard_) keyboard_->mapped();
            break;
        case XCB_ENTER_NOTIFY:
        case XCB_LEAVE_NOTIFY:
        case XCB_MOTION_NOTIFY:
        case XCB_BUTTON_PRESS:
        case XCB_BUTTON_RELEASE:
        case XCB_KEY_PRESS:
            options_.input ? options_.input(event) : handleInput(event);
            break;
        default:
            break;
    }
}

// Where it was not shown a person sees a hole, so it is not left for the next frame.
void ViewWindow::exposed(const xcb_expose_event_t& event) {
    if (!window_->exposed()) return;
    canvas_.damage({event.x, event.y, event.width, event.height});
    if (event.count == 0) canvas_.paintNow();
}

// The handlers that the router calls may retire this window.
void ViewWindow::handleInput(const xcb_generic_event_t& event) {
    const uint8_t type = typeOf(event);
    if (type == XCB_KEY_PRESS) {
        if (keyboard_) keyboard_->keyPressed(reinterpret_cast<const xcb_key_press_event_t&>(event));
        return;
    }
    // The pointer events of the protocol are laid out alike.
    const auto& e = reinterpret_cast<const xcb_button_press_event_t&>(event);
    pointer_ = inRootView(e);
    if (type == XCB_ENTER_NOTIFY) return entered();
    if (type == XCB_LEAVE_NOTIFY) return left(reinterpret_cast<const xcb_leave_notify_event_t&>(event));
    if (type == XCB_BUTTON_PRESS) return pressed(e);
    if (type == XCB_BUTTON_RELEASE) {
        if (keyboard_) keyboard_->pointerReleased();
        if (const auto button = mouseButton(e.detail)) router_.buttonReleased({*button, pointer_});
        return;
    }
    moved();
}

Point<ViewSpace> ViewWindow::inRootView(const xcb_button_press_event_t& event) const {
    return {event.event_x - canvas_.origin().x, event.event_y - canvas_.origin().y};
}

void ViewWindow::moved() {
    if (keyboard_) keyboard_->pointerMoved(pointer_);
    router_.pointerMoved(pointer_);
    if (!isRetired_) restartTooltip();
}

void ViewWindow::entered() {
    isPointerInside_ = true;
    exitsAfterMenu_ = false;
    moved();
}

void ViewWindow::left(const xcb_leave_notify_event_t& event) {
    if (event.mode == XCB_NOTIFY_MODE_GRAB && context_.isMenuOpen()) {
        exitsAfterMenu_ = true;  // the button whose menu is open stays highlighted
        return cancelTooltip();
    }
    pointerExited();
}

void ViewWindow::pointerExited() {
    isPointerInside_ = false;
    exitsAfterMenu_ = false;
    cancelTooltip();
    router_.pointerExited();
}

// Where the pointer is still inside, the end of the menu's grab says so next.
void ViewWindow::menuClosed() {
    if (exitsAfterMenu_) pointerExited();
    // The menu had the keyboard.
    if (keyboard_ && window_->isMapped()) keyboard_->mapped();
}

void ViewWindow::pressed(const xcb_button_press_event_t& event) {
    cancelTooltip();
    if (const auto button = mouseButton(event.detail)) {
        context_.notePress(*this, onRoot(pointer_));
        if (isRetired_) return;
        if (keyboard_) keyboard_->pointerPressed(event, pointer_);
        router_.buttonPressed({*button, pointer_});
    } else if (event.detail == kWheelUp || event.detail == kWheelDown) {
        const int notches = event.detail == kWheelUp ? -1 : 1;
        if (router_.wheelTurned({pointer_, static_cast<double>(notches)}) || !options_.wheelTurned) return;
        options_.wheelTurned(notches);
        pointer_ = inRootView(event);
        moved();  // against views that now lie elsewhere
    }
}

void ViewWindow::restartTooltip() {
    // Shown already, it stays while the pointer is over the same view.
    if (tooltipView_ && !tooltipTimer_ && router_.tooltipView() == tooltipView_) return;
    if (tooltipView_ && !tooltipTimer_) context_.tooltip().hide();
    tooltipView_ = nullptr;
    tooltipTimer_ = context_.mainLoop().after(kTooltipDelay, [this] { showTooltip(); });
}

void ViewWindow::cancelTooltip() {
    if (tooltipView_ && !tooltipTimer_) context_.tooltip().hide();
    tooltipView_ = nullptr;
    tooltipTimer_.reset();
}

void ViewWindow::showTooltip() {
    tooltipTimer_.reset();
    tooltipView_ = router_.tooltipView();
    if (!tooltipView_ || context_.isMenuOpen()) return;
    if (context_.openPopover() && context_.openPopover() != this) return;
    context_.tooltip().show(tooltipView_->tooltip(), onRoot(pointer_), keptFree().value_or(onRoot(*tooltipView_)));
}

void ViewWindow::willDetach(ui::View& view) {
    router_.viewWillDetach(view);
    if (tooltipView_ == &view) cancelTooltip();
    if (auto* bridge = context_.accessibility()) bridge->viewWillDetach(view);
}

void ViewWindow::describe() {
    inspect();
    if (auto* bridge = context_.accessibility(); bridge && !isRetired_) bridge->windowChanged(*this);
}

void ViewWindow::inspect() {
    const xcb_atom_t property = context_.inspectionProperty();
    if (!property || isRetired_ || options_.isUnseen) return;
    const Rect<RootSpace> root = onRoot(canvas_.root());
    window_->setText(property, context_.connection().atoms().utf8String, describeViews(canvas_.root(), root.origin()));
}

}  // namespace morvel::x11
