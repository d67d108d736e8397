// A Mac with two screens, scripted from above: applications with windows, and the bars as a person finds them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "AccessibilityWorld.h"
#include "Events.h"
#include "Platform/Mac/apple/AppKit/NSWindow.h"
#include "WindowServerWorld.h"
#include "WorkspaceWorld.h"

namespace morvel::mac::checked {

/// One per test, inside a RuntimeTest. The right screen has display number 2.
class MacDesktop {
public:
    MacDesktop();
    MacDesktop(const MacDesktop&) = delete;
    MacDesktop& operator=(const MacDesktop&) = delete;

    void plugInBoth();
    void unplugRight();

    void launch(std::int32_t pid, const std::string& name);
    /// A window of an application, in coordinates from the top left; it gets the focus in its application.
    Id open(std::int32_t pid, const std::string& title, CGPoint at);
    void close(const Id& window);
    void rename(const Id& window, const std::string& title);
    /// The application becomes the active one, with this window focused.
    void focus(const Id& window);
    void showSpace(std::uint64_t space);
    /// Gives the application menus, or with "AXExtrasMenuBar" status items, at the left ends given and as wide as told;
    /// they stand at the top of the left screen. Returns their elements.
    Elements showInMenuBar(std::int32_t pid, const std::string& attribute, const std::vector<double>& lefts,
                           double width);

    /// The bars that are on screen, from the left.
    static std::vector<NSPanel> bars();
    /// What a bar's buttons are called to someone who does not see them, from the left.
    static std::vector<std::string> buttons(const NSPanel& bar) { return buttonsIn(bar.contentView()); }
    static std::vector<std::string> buttonsIn(const NSView& view);
    /// The button of that name below the view; empty when there is none.
    static NSView button(const NSView& content, const std::string& label);
    /// Lays the bar out, then presses and releases the button in its middle; false when there is none of that name.
    static bool clickButton(const NSView& content, const std::string& label);
    /// The button's middle after the bar was laid out, in the window's coordinates; nothing when there is none.
    static std::optional<CGPoint> middleOfButton(const NSView& content, const std::string& label);
    /// Presses the button and moves with it held, far enough for a drag to begin.
    static bool pullButton(const NSView& content, const std::string& label);
    static bool rightClickButton(const NSView& content, const std::string& label);

private:
    void tellFocus(const ElementIdentity& window);
    void tellMoved(const ElementIdentity& window);
    void windowsChanged(std::int32_t pid);

    std::map<std::int32_t, Elements> windows_;
    std::uint32_t lastNumber_ = 100;
    std::uint64_t space_ = 1;
};

}  // namespace morvel::mac::checked
