// The program's only source of knowledge about other applications' windows, and the hand that acts on them.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <unordered_map>

#include "Platform/Accessibility.h"
#include "Platform/Log.h"
#include "Platform/MainLoop.h"
#include "Platform/Screens.h"
#include "Platform/WindowServer.h"
#include "Platform/Workspace.h"
#include "Util/WindowIDMint.h"
#include "WindowSource/WindowStore.h"

namespace morvel {

/// Main thread only. Observes every regular application from `start()` on and turns what happens to their windows into
/// events of the store. An action on a window that is not tracked (any more) does nothing.
class AXObserverManager {
public:
    /// What the manager needs of the system; all outlive it.
    struct System {
        MainLoop& mainLoop;
        Log& log;
        Accessibility& accessibility;
        WindowServer& windowServer;
        Workspace& workspace;
        Screens& screens;
    };

    AXObserverManager(System system, WindowIDMint& mint, WindowStore& store);
    ~AXObserverManager();

    void start();

    /// Brings the window to the front, out of the Dock if it is minimized, and gives it the focus.
    void raiseWindow(WindowID id);
    /// A click on the window's button: minimizes the frontmost window, brings any other to the front.
    void clickWindow(WindowID id);
    void minimizeWindow(WindowID id);
    void closeWindow(WindowID id);
    /// Centres the window, with its size, on the screen.
    void moveWindow(WindowID id, const Screen& to);
    void setWindowFrame(WindowID id, const Rect<AXSpace>& frame);
};

}  // namespace morvel
