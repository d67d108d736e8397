// A Mac with two screens, scripted from above: applications with windows, and the bars as a person finds them.
#pragma once

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
    /// they stand at the top of the left screen.
    void showInMenuBar(std::int32_t pid, const std::string& attribute, const std::vector<double>& lefts, double width);

    /// The bars that are on screen, from the left.
    static std::vector<NSPanel> bars();
    /// What the buttons that can be seen are called to someone who does not see them, from the left. This and what
    /// follows lays the content out first, and fails the test when there is no button of that name.
    static std::vector<std::string> buttonsIn(const NSView& content);
    static NSView button(const NSView& content, const std::string& label);
    /// In the window's coordinates.
    static CGPoint middleOfButton(const NSView& content, const std::string& label);
    static void clickButton(const NSView& content, const std::string& label);
    static void rightClickButton(const NSView& content, const std::string& label);
    /// Presses the button and moves with it held, far enough for a drag to begin.
    static void pullButton(const NSView& content, const std::string& label);

private:
    Id windowOf(const ElementIdentity& element);
    void tellFocus(const Id& window);
    void windowsChanged(std::int32_t pid);

    std::map<std::int32_t, Elements> windows_;
    std::uint32_t lastNumber_ = 100;
    std::uint64_t space_ = 1;
};

}  // namespace morvel::mac::checked
