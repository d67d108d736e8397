// What all windows of the toolkit share: the connection, colours, fonts, monitors, and each other.
#pragma once

#include <memory>
#include <vector>

#include "Platform/Linux/Accessibility/AccessibilityBridge.h"
#include "Platform/Linux/Screens/XScreens.h"
#include "Platform/Linux/UI/Compositing.h"
#include "Platform/Linux/UI/Palette.h"
#include "Platform/Linux/UI/TextLayouts.h"
#include "Platform/MainLoop.h"
#include "UI/View.h"

namespace morvel::x11 {

class TooltipWindow;
class ViewWindow;

/// Main thread only. Outlives all windows.
class ToolkitContext {
public:
    /// All outlive the context.
    ToolkitContext(XConnection& connection, MainLoop& mainLoop, XScreens& screens);
    ~ToolkitContext();
    ToolkitContext(const ToolkitContext&) = delete;
    ToolkitContext& operator=(const ToolkitContext&) = delete;

    XConnection& connection() { return connection_; }
    MainLoop& mainLoop() { return mainLoop_; }
    TextLayouts& layouts() { return layouts_; }
    Compositing& compositing() { return compositing_; }
    TooltipWindow& tooltip() { return *tooltip_; }
    const Palette& palette() const { return palette_; }
    /// Shows all windows in other colours.
    void setPalette(const Palette& palette);

    Rect<RootSpace> toRoot(const Rect<ScreenSpace>& rect) const { return screens_.mainFrame().toRoot(rect); }
    Rect<ScreenSpace> toScreen(const Rect<RootSpace>& rect) const { return screens_.mainFrame().toScreen(rect); }
    std::vector<Rect<RootSpace>> monitors();
    /// Follows the server's changes of size.
    const Rect<RootSpace>& root() const { return root_; }
    /// Displays or the root window changed: what windows told the window manager about them may be wrong.
    [[nodiscard]] Subscription observeGeometry(std::function<void()> changed) {
        return geometryChanged_.subscribe(std::move(changed));
    }

    /// Whether tests want to know which views are where; the property that they read then, else 0.
    xcb_atom_t inspectionProperty() const { return inspectionProperty_; }

    [[nodiscard]] Subscription registerWindow(ViewWindow& window);
    const std::vector<ViewWindow*>& windows() const { return windows_; }
    /// The window in which the view is shown now, or null.
    ViewWindow* windowShowing(const ui::View& view) const;
    /// The window that is this one on the server now, or null.
    ViewWindow* windowWithID(xcb_window_t id) const;
    bool isPointerInside() const;

    /// Before a press of a button goes to the views of one of the windows.
    [[nodiscard]] Subscription observePresses(std::function<void(const ViewWindow&, Point<RootSpace>)> pressed) {
        return pressed_.subscribe(std::move(pressed));
    }
    void notePress(const ViewWindow& window, Point<RootSpace> at) { pressed_.emit(window, at); }

    /// Who is told of windows and views, or null. Null at first; the caller owns the bridge and takes it away in time.
    AccessibilityBridge* accessibility() const { return accessibility_; }
    void setAccessibilityBridge(AccessibilityBridge* bridge);

    /// Takes the window off the screen at once and destroys it in a later turn: it may be in the middle of telling its
    /// views about an event. Null is nothing.
    void retire(std::unique_ptr<ViewWindow> window);

    /// While a menu is open it has all input, and what the pointer does meanwhile is nothing to other windows.
    bool isMenuOpen() const { return isMenuOpen_; }
    void setMenuOpen(bool isOpen);

    /// The popover that was opened last and still is, or null. What it stands beside shows no tooltip meanwhile: it
    /// would cover the popover.
    const ViewWindow* openPopover() const { return openPopover_; }
    void popoverOpened(const ViewWindow& window);
    void popoverWillClose(const ViewWindow* window);

private:
    XConnection& connection_;
    MainLoop& mainLoop_;
    XScreens& screens_;
    TextLayouts layouts_;
    Compositing compositing_;
    Palette palette_;
    Rect<RootSpace> root_;
    xcb_atom_t inspectionProperty_ = 0;
    bool isMenuOpen_ = false;
    const ViewWindow* openPopover_ = nullptr;
    AccessibilityBridge* accessibility_ = nullptr;
    std::vector<ViewWindow*> windows_;
    Signal<> geometryChanged_;
    Signal<const ViewWindow&, Point<RootSpace>> pressed_;
    std::vector<std::unique_ptr<ViewWindow>> retired_;
    Timer burial_;
    std::unique_ptr<TooltipWindow> tooltip_;
    Subscriptions subscriptions_;
};

}  // namespace morvel::x11
