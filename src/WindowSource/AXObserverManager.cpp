#include "WindowSource/AXObserverManager.h"

#include <set>
#include <utility>

#include "Platform/AXNames.h"

namespace morvel {

namespace {

using namespace std::chrono_literals;

/// An application that was just launched often makes its first window after the launch notice.
constexpr Duration kSecondLookDelay = 1500ms;
/// Long enough for an application to come to the front, short enough to belong to the click for the person.
constexpr Duration kRaiseCheckDelay = 300ms;
/// Until a desktop whose displays have changed has put its windows where they belong.
constexpr Duration kScreensSettleDelay = 500ms;
constexpr Duration kSweepPeriod = 15s;
constexpr int kSubscriptionAttempts = 6;

constexpr std::string_view kNotifications[] = {
    ax::kWindowCreated, ax::kUIElementDestroyed,   ax::kTitleChanged,      ax::kWindowMoved,
    ax::kWindowResized, ax::kFocusedWindowChanged, ax::kMainWindowChanged, ax::kApplicationActivated};

}  // namespace

AXObserverManager::AXObserverManager(System system, WindowIDMint& mint, WindowStore& store)
    : system_(system),
      store_(store),
      actions_(system.accessibility, system.workspace),
      unresponsive_(
          system.mainLoop,
          [&accessibility = system.accessibility](ProcessID pid) {
              const AXElement app = accessibility.applicationElement(pid);
              return accessibility.attribute(app, ax::kRole).error != AXError::CannotComplete;
          },
          [this](ProcessID pid) { processRecovered(pid); }),
      tracker_({system.mainLoop, system.log, system.accessibility, system.windowServer, system.workspace, mint, store,
                unresponsive_, [this] { answerDenied(); }},
               [this](ProcessID pid, const AXElement& window) {
                   // Since macOS 15 an application's own subscription leaves out the windows that are older than the
                   // observer. Where both are told, the second finds nothing to do.
                   const auto owner = attachedApps_.find(pid);
                   if (owner != attachedApps_.end())
                       owner->second.observer->addNotification(window, ax::kUIElementDestroyed);
               }),
      notificationRetrier_(system.mainLoop) {}

void AXObserverManager::start() {
    const auto watch = lifetime_.watch();
    observeAppLifecycle();
    attachToAllRunningApps();
    if (watch.isAlive()) deadPIDSweepTimer_ = system_.mainLoop.every(kSweepPeriod, kSweepPeriod, [this] { sweep(); });
}

void AXObserverManager::adoptFocus() {
    const auto frontmost = system_.workspace.frontmostApplication();
    const auto found = frontmost ? attachedApps_.find(*frontmost) : attachedApps_.end();
    if (found == attachedApps_.end()) return;
    tracker_.handleNotice(AXElement(found->second.element), ax::kApplicationActivated, *frontmost);
}

void AXObserverManager::observeAppLifecycle() {
    Workspace& workspace = system_.workspace;
    workspaceObservers_.push_back(
        workspace.observeLaunched([this](const RunningApplication& app) { attachLate(app); }));
    workspaceObservers_.push_back(workspace.observeTerminated([this](const RunningApplication& app) {
        const auto found = attachedApps_.find(app.pid);
        if (found != attachedApps_.end() && found->second.app.instance == app.instance) detach(app.pid);
    }));
    workspaceObservers_.push_back(
        workspace.observeActivated([this](const RunningApplication& app) { applicationActivated(app); }));
    workspaceObservers_.push_back(workspace.observeActiveSpaceChanged([this] { enumerateAllAgain(); }));
    workspaceObservers_.push_back(workspace.observeSessionActivated([this] { enumerateAllAgain(); }));
    // Positions count from the main display's corner. Where that one moves, those of windows that stay where they are
    // change too, and their applications need not tell.
    workspaceObservers_.push_back(system_.screens.observeChanges(
        [this] { screensSettled_ = system_.mainLoop.after(kScreensSettleDelay, [this] { readAllAgain(); }); }));
}

void AXObserverManager::attachToAllRunningApps() {
    const auto watch = lifetime_.watch();
    for (const RunningApplication& app : system_.workspace.runningApplications()) {
        if (app.policy == ActivationPolicy::Regular) attach(app);
        if (!watch.isAlive()) return;
    }
}

void AXObserverManager::attach(const RunningApplication& app) {
    const auto watch = lifetime_.watch();
    const ProcessID pid = app.pid;
    if (const auto known = attachedApps_.find(pid); known != attachedApps_.end()) {
        if (known->second.app.instance == app.instance) return;
        detach(pid);  // the number went to another process, and nobody told
        if (!watch.isAlive()) return;
    }
    auto observer =
        system_.accessibility.makeObserver(pid, [this, watch, pid](const AXElement& e, std::string_view name) {
            // The element is copied: handling the notice may destroy the observer, and what it lent us with it.
            if (watch.isAlive()) tracker_.handleNotice(AXElement(e), name, pid);
        });
    if (!observer) return;
    const AXElement element = system_.accessibility.applicationElement(pid);
    Attached& attached = attachedApps_.emplace(pid, Attached{app, element, std::move(observer), {}}).first->second;
    attached.pendingNotifications = subscribe(attached, {std::begin(kNotifications), std::end(kNotifications)});
    if (attached.pendingNotifications.empty()) {
        tracker_.enumerateAXWindows(pid);
    } else {
        startRetrier(pid);
    }
    if (watch.isAlive() && tracker_.becomeWindowless(app) && watch.isAlive()) scheduleSecondLook(pid);
}

void AXObserverManager::attachLate(const RunningApplication& app) {
    if (app.policy != ActivationPolicy::Regular) return;
    const auto watch = lifetime_.watch();
    attach(app);
    if (watch.isAlive() && system_.workspace.frontmostApplication() == app.pid) adoptFocus();
}

void AXObserverManager::detach(ProcessID pid) {
    attachedApps_.erase(pid);
    notificationRetrier_.cancel(pid);
    unresponsive_.remove(pid);
    tracker_.forget(pid);
}

void AXObserverManager::applicationActivated(const RunningApplication& app) {
    const auto watch = lifetime_.watch();
    const ProcessID pid = app.pid;
    attachLate(app);
    if (!watch.isAlive()) return;
    const auto found = attachedApps_.find(pid);
    // Retries that were given up get a new chance: the application is certainly up now.
    if (found != attachedApps_.end() && !found->second.pendingNotifications.empty() &&
        !notificationRetrier_.isPending(pid))
        startRetrier(pid);
    // Windows that nobody announced mostly come to light when their application comes to the front.
    if (watch.isAlive() && attachedApps_.contains(pid)) tracker_.enumerateAXWindows(pid);
}

AXObserverManager::Notifications AXObserverManager::subscribe(Attached& attached, const Notifications& notifications) {
    Notifications refused;
    for (const std::string_view name : notifications) {
        // Of a process that hangs each question costs a time-out, so it is asked only one.
        const bool isHung = unresponsive_.contains(attached.app.pid);
        const AXError error =
            isHung ? AXError::CannotComplete : attached.observer->addNotification(attached.element, name);
        if (error == AXError::CannotComplete) unresponsive_.add(attached.app.pid);
        if (error == AXError::ApiDisabled) answerDenied();
        if (error != AXError::Success) refused.push_back(name);
    }
    return refused;
}

void AXObserverManager::startRetrier(ProcessID pid) {
    notificationRetrier_.start(pid, kSubscriptionAttempts, doublingBackoff, [this, watch = lifetime_.watch(), pid] {
        return !watch.isAlive() || retrySubscriptions(pid);
    });
}

bool AXObserverManager::retrySubscriptions(ProcessID pid) {
    const auto found = attachedApps_.find(pid);
    if (found == attachedApps_.end() || found->second.pendingNotifications.empty()) return true;
    Attached& attached = found->second;
    attached.pendingNotifications = subscribe(attached, std::exchange(attached.pendingNotifications, {}));
    if (!attached.pendingNotifications.empty()) return false;
    // What was found by a second look meanwhile may have changed without our hearing of it.
    tracker_.refresh(pid);
    return true;
}

void AXObserverManager::scheduleSecondLook(ProcessID pid) {
    const uint64_t look = ++lastSecondLook_;
    secondLooks_[look] = system_.mainLoop.after(kSecondLookDelay, [this, pid, look] { lookAgain(pid, look); });
}

void AXObserverManager::lookAgain(ProcessID pid, uint64_t look) {
    secondLooks_.erase(look);
    if (tracker_.isWindowless(pid) && attachedApps_.contains(pid)) tracker_.enumerateAXWindows(pid);
}

void AXObserverManager::readAllAgain() {
    const auto watch = lifetime_.watch();
    std::vector<ProcessID> pids;
    for (const auto& [pid, attached] : attachedApps_) pids.push_back(pid);
    for (const ProcessID pid : pids) {
        if (attachedApps_.contains(pid)) tracker_.refresh(pid);
        if (!watch.isAlive()) return;
    }
}

void AXObserverManager::enumerateAllAgain() {
    // Applications list their windows on the visible Spaces alone, so a switch may bring new ones to light; those
    // that are hidden now stay.
    const auto watch = lifetime_.watch();
    std::vector<ProcessID> pids;
    for (const auto& [pid, attached] : attachedApps_) pids.push_back(pid);
    for (const ProcessID pid : pids) {
        tracker_.enumerateAXWindows(pid);
        if (!watch.isAlive()) return;
    }
}

void AXObserverManager::sweep() {
    const auto watch = lifetime_.watch();
    sweepDeadPIDs();
    // While nobody sees the session, applications and the window list tell of no windows though they have some.
    if (watch.isAlive() && system_.workspace.isSessionActive()) tracker_.sweepClosedWindows();
}

void AXObserverManager::sweepDeadPIDs() {
    const auto watch = lifetime_.watch();
    std::set<ProcessID> pids;
    for (const auto& [pid, attached] : attachedApps_) pids.insert(pid);
    for (const auto& [id, record] : *store_.windows().value()) pids.insert(record.pid);
    for (const ProcessID pid : pids) {
        const auto successor = successorOf(pid);
        if (successor || !system_.workspace.isProcessAlive(pid)) detach(pid);
        if (watch.isAlive() && successor) attachLate(*successor);
        if (!watch.isAlive()) return;
    }
}

std::optional<RunningApplication> AXObserverManager::successorOf(ProcessID pid) const {
    const auto attached = attachedApps_.find(pid);
    if (attached == attachedApps_.end()) return std::nullopt;
    auto now = system_.workspace.runningApplication(pid);
    return now && now->instance != attached->second.app.instance ? now : std::nullopt;
}

void AXObserverManager::processRecovered(ProcessID pid) {
    const auto watch = lifetime_.watch();
    const auto found = attachedApps_.find(pid);
    if (found == attachedApps_.end()) return;
    if (!found->second.pendingNotifications.empty()) startRetrier(pid);
    if (watch.isAlive()) tracker_.refresh(pid);
}

void AXObserverManager::restart() {
    const auto watch = lifetime_.watch();
    permissionLoss_.reset();
    std::vector<ProcessID> pids;
    for (const auto& [pid, attached] : attachedApps_) pids.push_back(pid);
    for (const ProcessID pid : pids) {
        detach(pid);
        if (!watch.isAlive()) return;
    }
    attachToAllRunningApps();
}

void AXObserverManager::answerDenied() {
    // A single application may refuse for reasons of its own; only the system's own word counts.
    if (permissionLoss_ || system_.accessibility.isTrusted()) return;
    permissionLoss_ = system_.mainLoop.after(Duration{}, [this] {
        if (onPermissionLost) onPermissionLost();
    });
}

void AXObserverManager::raiseWindow(WindowID id) {
    const auto window = tracker_.find(id);
    if (!window) return;
    const auto frontmost = system_.workspace.frontmostApplication();
    actions_.raise(*window);
    checkRaised(id, frontmost);
}

void AXObserverManager::clickWindow(WindowID id) {
    const auto window = tracker_.find(id);
    if (!window) return;
    const auto frontmost = system_.workspace.frontmostApplication();
    if (actions_.click(*window) == ClickOutcome::Raised) checkRaised(id, frontmost);
}

/// Since macOS 14 activating an application is a request, which the system drops now and then. It is made once more,
/// unless the person has gone elsewhere meanwhile.
void AXObserverManager::checkRaised(WindowID id, std::optional<ProcessID> frontmostBefore) {
    raiseSeen_ = store_.focusedID().subscribe(
        [this, id](const std::optional<WindowID>& focused) {
            if (focused == id) raiseCheck_.reset();  // it worked; what comes after is the person's own doing
        },
        Current::Skip);
    raiseCheck_ = system_.mainLoop.after(kRaiseCheckDelay, [this, id, frontmostBefore] {
        const auto window = tracker_.find(id);
        if (!window || unresponsive_.contains(window->pid)) return;
        const auto frontmost = system_.workspace.frontmostApplication();
        const bool wentElsewhere = frontmost != window->pid && frontmost != frontmostBefore;
        if (!wentElsewhere && !actions_.isFrontmost(*window)) actions_.raise(*window);
    });
}

void AXObserverManager::minimizeWindow(WindowID id) {
    if (const auto window = tracker_.find(id)) actions_.minimize(*window);
}

void AXObserverManager::closeWindow(WindowID id) {
    if (const auto window = tracker_.find(id)) actions_.close(*window);
}

void AXObserverManager::moveWindow(WindowID id, const Screen& to) {
    const auto screens = system_.screens.screens();
    if (screens.empty()) return;  // displays are being reconfigured
    if (const auto window = tracker_.find(id)) actions_.move(*window, to.frame, screens.front().frame.height);
}

void AXObserverManager::setWindowFrame(WindowID id, const Rect<AXSpace>& frame) {
    // Nobody waits for this, unlike for what a person asked for: a process that hangs is spared.
    const auto window = tracker_.find(id);
    if (!window || unresponsive_.contains(window->pid)) return;
    if (!actions_.setFrame(*window, frame)) unresponsive_.add(window->pid);
}

}  // namespace morvel
