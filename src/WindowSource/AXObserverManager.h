// The program's only source of knowledge about other applications' windows, and the hand that acts on them.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Platform/Accessibility.h"
#include "Platform/Log.h"
#include "Platform/MainLoop.h"
#include "Platform/Screens.h"
#include "Platform/WindowServer.h"
#include "Platform/Workspace.h"
#include "Util/Lifetime.h"
#include "Util/RetryScheduler.h"
#include "Util/WindowIDMint.h"
#include "WindowSource/UnresponsiveProcesses.h"
#include "WindowSource/WindowActions.h"
#include "WindowSource/WindowStore.h"
#include "WindowSource/WindowTracker.h"

namespace morvel {

/// Main thread only. Observes every regular application from `start()` on and turns what happens to their windows into
/// events of the store. An action on a window that is not tracked (any more) does nothing. It may be destroyed from
/// inside a subscriber of the store.
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
    AXObserverManager(const AXObserverManager&) = delete;
    AXObserverManager& operator=(const AXObserverManager&) = delete;

    void start();
    /// Observes every application anew, as after the permission was taken away and given back.
    void restart();
    /// Called in a later turn, once for each loss, when this program is no longer trusted though it was.
    std::function<void()> onPermissionLost;

    /// Takes over the focus as it is now: no notice tells of a window that had it before it was observed.
    void adoptFocus();

    /// Brings the window to the front, out of the Dock if it is minimized, and gives it the focus.
    void raiseWindow(WindowID id);
    /// A click on the window's button: minimizes the frontmost window, brings any other to the front.
    void clickWindow(WindowID id);
    void minimizeWindow(WindowID id);
    void closeWindow(WindowID id);
    /// Centres the window, with its size, on the screen.
    void moveWindow(WindowID id, const Screen& to);
    void setWindowFrame(WindowID id, const Rect<AXSpace>& frame);

private:
    /// Names of notifications; they are constants.
    using Notifications = std::vector<std::string_view>;

    struct Attached {
        RunningApplication app;  // the one that the observer was made for
        AXElement element;
        std::unique_ptr<AXObserver> observer;
        Notifications pendingNotifications;  // refused so far
    };

    void observeAppLifecycle();
    void attachToAllRunningApps();
    void attach(const RunningApplication& app);
    /// For a regular application that came, or came to the front, while we run: what it told of its focus before it was
    /// attached, or while the system still called another one the front one, is lost.
    void attachLate(const RunningApplication& app);
    void detach(ProcessID pid);
    void applicationActivated(const RunningApplication& app);
    /// The ones that were refused.
    Notifications subscribe(Attached& attached, const Notifications& notifications);
    void startRetrier(ProcessID pid);
    bool retrySubscriptions(ProcessID pid);
    void scheduleSecondLook(ProcessID pid);
    void lookAgain(ProcessID pid, uint64_t look);
    void enumerateAllAgain();
    void readAllAgain();
    void checkRaised(WindowID id, std::optional<ProcessID> frontmostBefore);
    void answerDenied();
    void sweep();
    void sweepDeadPIDs();
    /// The process that has the number of an attached one now, of whose end nobody told.
    std::optional<RunningApplication> successorOf(ProcessID pid) const;
    void processRecovered(ProcessID pid);

    System system_;
    WindowStore& store_;
    WindowActions actions_;
    UnresponsiveProcesses unresponsive_;
    WindowTracker tracker_;
    std::unordered_map<ProcessID, Attached> attachedApps_;
    RetryScheduler<ProcessID> notificationRetrier_;
    std::unordered_map<uint64_t, Timer> secondLooks_;
    uint64_t lastSecondLook_ = 0;
    Timer deadPIDSweepTimer_;
    Timer screensSettled_;
    Timer raiseCheck_;        // of the window that was raised last
    Subscription raiseSeen_;  // ends that check when the window gets the focus
    Timer permissionLoss_;    // while it is about to be told, and after that until `restart`
    Subscriptions workspaceObservers_;
    Lifetime lifetime_;
};

}  // namespace morvel
