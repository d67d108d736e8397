// RandR's monitors as the displays, also those that a person defined over parts of an output.
#pragma once

#include <xcb/randr.h>

#include <map>

#include "Platform/Linux/Screens/Monitor.h"
#include "Platform/Linux/System/XConnection.h"
#include "Platform/MainLoop.h"
#include "Platform/Screens.h"
#include "Util/Signal.h"

namespace morvel::x11 {

/// The first screen is the primary monitor, or the first one where none is primary. A monitor keeps its display
/// identifier by its name, also over being unplugged. While monitors are reconfigured the list stays as it was until
/// the server has been quiet for a moment; a list without monitors changes nothing.
class XScreens : public Screens {
public:
    /// Both outlive this. The monitors are known once the connection's replies have been settled.
    XScreens(XConnection& connection, MainLoop& mainLoop);

    std::vector<Screen> screens() override;
    DisplayID mainDisplay() override;
    std::optional<std::string> uuidString(DisplayID display) override;
    double statusBarThickness() override { return 0; }
    [[nodiscard]] Subscription observeChanges(std::function<void()> changed) override;

    /// For converting between the X server's coordinates and everybody else's.
    MainDisplayFrame mainFrame() const;

    /// What windows of other programs reserve; this program's own bar is not among it, or it would take itself for
    /// the system's menu bar. Shows in the visible frames.
    void setStruts(std::vector<Strut> struts);

private:
    void scheduleQuery();
    void query();
    void requestNames(const xcb_randr_get_monitors_reply_t* reply);
    void setMonitors(std::vector<Monitor> monitors);
    DisplayID identify(const std::string& name);

    XConnection& connection_;
    MainLoop& mainLoop_;
    std::vector<Monitor> monitors_;  // main first
    std::vector<Strut> struts_;
    Rect<RootSpace> root_;
    std::map<std::string, DisplayID> identities_;
    Signal<> changed_;
    Timer settle_;
    Subscriptions subscriptions_;
};

}  // namespace morvel::x11
