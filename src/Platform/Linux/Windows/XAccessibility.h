// Client windows as accessibility elements, under the accessibility interface's own names.
#pragma once

#include <map>

#include "Platform/Accessibility.h"
#include "Platform/Linux/Screens/XScreens.h"
#include "Platform/Linux/Windows/ClientWindows.h"
#include "Platform/Linux/Windows/NewWindowMenu.h"
#include "Platform/Linux/Windows/WindowRequests.h"
#include "Platform/Linux/Windows/XElement.h"

namespace morvel::x11 {

/// No permission is needed on this system. Every answer comes from what is tracked, so no call waits for anybody; what
/// is set shows once the window manager has done it. Desktop furniture has a role of its own, so that it is never
/// taken for a window.
class XAccessibility : public Accessibility {
public:
    /// All outlive this.
    XAccessibility(ClientWindows& clients, WindowRequests& requests, XScreens& screens, XWorkspace& workspace);

    bool isTrusted() const override { return true; }
    bool isTrustedAfterPrompt() override { return true; }
    void openPermissionSettings() override {}

    AXElement applicationElement(ProcessID pid) override;
    AXAnswer attribute(const AXElement& element, std::string_view name) override;
    AXError setAttribute(const AXElement& element, std::string_view name, const AXValue& value) override;
    AXError performAction(const AXElement& element, std::string_view name) override;
    void startAction(const AXElement& element, std::string_view name) override { performAction(element, name); }
    std::optional<WindowNumber> windowNumber(const AXElement& element) override;
    std::unique_ptr<AXObserver> makeObserver(ProcessID pid, Notice notice) override;

    /// The window of the process that had the focus last, if it still has it or could get it back.
    const ClientWindow* focusedWindow(ProcessID pid) const;

private:
    using Emitted = Signal<ProcessID, const AXElement&, std::string_view>;
    class Observer;

    const ClientWindow* find(const XElement& element) const;
    AXElement windowElement(const ClientWindow& client) const;
    AXAnswer applicationAttribute(ProcessID pid, std::string_view name);
    AXAnswer windowAttribute(const ClientWindow& client, std::string_view name);
    AXError setMinimized(const ClientWindow& client, bool isMinimized);
    AXError setPosition(const ClientWindow& client, Point<AXSpace> position);
    AXError setSize(const ClientWindow& client, Size size);
    Rect<AXSpace> frameOf(const ClientWindow& client) const;

    void clientChanged(const ClientWindow& client, ClientChange change);
    void activeChanged();
    void emit(ProcessID pid, const AXElement& element, std::string_view name);

    ClientWindows& clients_;
    WindowRequests& requests_;
    XScreens& screens_;
    NewWindowMenu newWindowMenu_;
    Emitted emitted_;
    std::map<ProcessID, xcb_window_t> lastFocused_;
    std::optional<ProcessID> activeProcess_;
    Subscriptions subscriptions_;
};

}  // namespace morvel::x11
