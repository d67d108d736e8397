// A window that shows a tree of views: joins the window, its pixels, its input and its tooltips.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "Platform/Linux/UI/Bubble.h"
#include "Platform/Linux/UI/ToolkitContext.h"
#include "Platform/Linux/UI/ViewCanvas.h"
#include "Platform/Linux/UI/XWindow.h"
#include "UI/EventRouter.h"

namespace morvel::x11 {

/// What tooltips and menus of the window's views keep clear of.
enum class KeepClearOf { Window, View };

/// Who is told of what a person types into a window, beside its views. A call may be the listener's end.
class KeyboardListener {
public:
    virtual ~KeyboardListener() = default;
    /// The window is on the screen, or the keyboard is to be had again.
    virtual void mapped() = 0;
    virtual void keyPressed(const xcb_key_press_event_t& event) = 0;
    virtual void pointerPressed(const xcb_button_press_event_t& event, Point<ViewSpace> inRootView) = 0;
    virtual void pointerMoved(Point<ViewSpace> inRootView) = 0;
    virtual void pointerReleased() = 0;
};

struct ViewWindowOptions {
    Management management = Management::Unmanaged;
    KeepClearOf keepClearOf = KeepClearOf::View;
    /// Only takes input; its views are never painted, and nobody is told of it. Not managed.
    bool isUnseen = false;
    /// Sets what only this kind of window has, before it is shown; also when the server needs a new window for it.
    std::function<void(XWindow&)> prepare = {};
    /// Takes the window's input instead of its views; may be empty.
    std::function<void(const xcb_generic_event_t&)> input = {};
    /// The wheel was turned a notch, -1 up, 1 down, and no view used it. May be empty.
    std::function<void(int)> wheelTurned = {};
};

/// Main thread only. The window lives until `retire`; the object may be called back by its own events after that, so
/// its owner hands it to the context, which keeps it until the turn is over.
class ViewWindow final : public AccessibleWindow {
public:
    /// The root view and the context outlive the window.
    ViewWindow(ToolkitContext& context, ui::View& root, ViewWindowOptions options);
    ~ViewWindow();
    ViewWindow(const ViewWindow&) = delete;
    ViewWindow& operator=(const ViewWindow&) = delete;

    /// In the root window's pixels; the root view's corner lies at `origin` in the window. With a bubble, its outline
    /// is painted below the views; else an opaque window has the window background below them.
    void setFrame(const PixelRect& frame, Point<ViewSpace> origin = {}, std::optional<Bubble> bubble = {});
    const PixelRect& frame() const { return frame_; }
    Rect<RootSpace> frameOnRoot() const override;
    /// The window itself, when tooltips and menus are to leave it free.
    std::optional<Rect<RootSpace>> keptFree() const;
    void show();
    void hide();
    void retire();

    XWindow& window() { return *window_; }
    ViewCanvas& canvas() { return canvas_; }
    /// Where the view is on the root window.
    Rect<RootSpace> onRoot(const ui::View& view) const override;
    Point<RootSpace> onRoot(Point<ViewSpace> inRootView) const;
    Point<ViewSpace> inRootView(Point<RootSpace> onRoot) const;
    /// Where the pointer was last over this window, on the root.
    Point<RootSpace> pointer() const { return onRoot(pointer_); }
    ui::EventRouter& router() { return router_; }
    /// Whether drags may be dropped on it now.
    bool takesDrags() const { return !isRetired_ && !options_.input && window_->isMapped(); }
    ui::View& rootView() const override { return canvas_.root(); }
    bool isShown() const override { return window_->isMapped() && !options_.isUnseen; }
    bool isPointerInside() const { return isPointerInside_; }
    /// Null takes it away; the listener outlives its being set.
    void setKeyboardListener(KeyboardListener* listener) { keyboard_ = listener; }
    void menuClosed();

private:
    void makeWindow();
    void applyShape();
    void awaitMapping(int triesLeft);
    void handle(const xcb_generic_event_t& event);
    void exposed(const xcb_expose_event_t& event);
    void handleInput(const xcb_generic_event_t& event);
    void entered();
    void left(const xcb_leave_notify_event_t& event);
    void pressed(const xcb_button_press_event_t& event);
    void pointerExited();
    Point<ViewSpace> inRootView(const xcb_button_press_event_t& event) const;
    void moved();
    void restartTooltip();
    void cancelTooltip();
    void showTooltip();
    void willDetach(ui::View& view);
    void describe();
    void inspect();

    ToolkitContext& context_;
    const ViewWindowOptions options_;
    PixelRect frame_{0, 0, 1, 1};
    std::optional<Bubble> bubble_;
    std::unique_ptr<XWindow> window_;
    ui::EventRouter router_;
    KeyboardListener* keyboard_ = nullptr;
    bool isRetired_ = false;
    bool isPointerInside_ = false;
    bool exitsAfterMenu_ = false;      // the pointer's exit was only the menu's grab, as far as is known
    Point<ViewSpace> pointer_;         // in the root view's space
    ui::View* tooltipView_ = nullptr;  // that waits for its tooltip or shows it
    Timer tooltipTimer_;
    Timer mapping_;  // runs while a managed window is asked for but not yet told to be mapped
    Subscription events_;
    Subscription registration_;
    Subscription compositing_;
    ViewCanvas canvas_;  // last: its end tells us of each view
};

}  // namespace morvel::x11
