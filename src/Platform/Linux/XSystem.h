// The host's system half: every seam but the views', in the order in which they need one another.
#pragma once

#include <string>

#include "Platform/Linux/Applications/DesktopEntries.h"
#include "Platform/Linux/Applications/XWorkspace.h"
#include "Platform/Linux/Icons/XIcons.h"
#include "Platform/Linux/Screens/XScreens.h"
#include "Platform/Linux/System/GLibMainLoop.h"
#include "Platform/Linux/System/JsonDefaults.h"
#include "Platform/Linux/System/XConnection.h"
#include "Platform/Linux/Windows/ClientWindows.h"
#include "Platform/Linux/Windows/RootState.h"
#include "Platform/Linux/Windows/WindowRequests.h"
#include "Platform/Linux/Windows/XAccessibility.h"
#include "Platform/Linux/Windows/XWindowServer.h"

namespace morvel::x11 {

/// Complete once made: monitors, workspaces and windows have been asked for and answered.
class XSystem {
public:
    /// The main loop, log and connection outlive this.
    XSystem(GLibMainLoop& mainLoop, Log& log, XConnection& connection, std::string defaultsPath);

    XScreens& screens() { return screens_; }
    Workspace& workspace() { return workspace_; }
    Accessibility& accessibility() { return accessibility_; }
    WindowServer& windowServer() { return windowServer_; }
    UserDefaults& defaults() { return defaults_; }
    Icons& icons() { return icons_; }

private:
    /// Asked for together and awaited once, so that start-up takes few round trips.
    struct Tracking {
        Tracking(XConnection& connection, MainLoop& mainLoop, XScreens& screens);

        RootState root;
        ClientWindows clients;
        Subscription struts;
    };

    JsonDefaults defaults_;
    XScreens screens_;
    Tracking tracking_;
    WindowRequests requests_;
    DesktopEntries entries_;
    // Before the accessibility, so that an application is known by the time its first window is told, and still when
    // its last one goes.
    XWorkspace workspace_;
    XAccessibility accessibility_;
    XWindowServer windowServer_;
    XIcons icons_;
};

}  // namespace morvel::x11
