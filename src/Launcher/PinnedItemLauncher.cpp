#include "Launcher/PinnedItemLauncher.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "Launcher/AXMenuShortcut.h"

namespace morvel {

namespace {

using namespace std::chrono_literals;

constexpr Duration kPatience = 4s;
constexpr Duration kCheckDelay = kPatience + 100ms;

}  // namespace

PinnedItemLauncher::PinnedItemLauncher(System system, const WindowStore& store, MoveWindow moveWindow)
    : system_(system),
      store_(store),
      moveWindow_(std::move(moveWindow)),
      windows_(store.windows().subscribe([this](const WindowMapRef&) { windowsPublished(); }, Current::Skip)) {}

PinnedItemLauncher::~PinnedItemLauncher() {
    for (const PendingLaunch& launch : pending_) cleanupStickyAdditions(launch.stickyAdditions);
}

void PinnedItemLauncher::click(const PinnedItem& item, DisplayID targetScreenID) {
    launch(item, targetScreenID, false);
}

void PinnedItemLauncher::launchNewInstance(const PinnedItem& item, DisplayID targetScreenID) {
    launch(item, targetScreenID, true);
}

void PinnedItemLauncher::launch(const PinnedItem& item, DisplayID targetScreenID, bool forceNewProcess) {
    if (!screen(targetScreenID)) return;
    const auto displays = system_.spaceQuery.snapshotByDisplay();
    const auto display = displays.find(targetScreenID);
    Target target{targetScreenID, display == displays.end() ? std::nullopt : display->second.current, {}};
    for (const auto& [id, snapshot] : *store_.windows().value()) target.knownIDs.insert(id);
    if (item.kind == PinnedItem::Kind::Folder)
        openFolder(item.identifier, std::move(target));
    else
        launchApp(item.identifier, std::move(target), forceNewProcess);
}

void PinnedItemLauncher::launchApp(const std::string& bundleID, Target target, bool forceNewProcess) {
    // The file manager's own window is that of the person's home.
    if (bundleID == system_.workspace.fileManager())
        return openFolder(system_.workspace.homeFolder(), std::move(target));
    const auto path = system_.workspace.locate(bundleID);
    if (!path) return;
    const auto pid = forceNewProcess ? std::nullopt : firstRunning(bundleID);
    if (pid) return requestWindow(bundleID, *pid, std::move(target));
    enqueuePending(bundleID, std::move(target), true);
    system_.workspace.openApplication(*path, {.createsNewInstance = forceNewProcess, .activates = false});
}

void PinnedItemLauncher::requestWindow(const std::string& bundleID, ProcessID pid, Target target) {
    const bool hadWindows = hasWindows(pid);
    if (hadWindows && AXMenuShortcut::press(system_.accessibility, pid, "n", "window"))
        return enqueuePending(bundleID, std::move(target), true);
    // Coming to the front would show the Space of its windows, so for the moment they are on this one.
    auto lent = hadWindows ? stickAppWindowsToSpace(pid, target.activeSpaceID) : StickyAdditions{};
    system_.workspace.activate(pid);
    enqueuePending(bundleID, std::move(target), false, std::move(lent));
}

void PinnedItemLauncher::openFolder(const std::string& path, Target target) {
    const std::string fileManager = system_.workspace.fileManager();
    const auto pid = firstRunning(fileManager);
    auto lent = pid ? stickAppWindowsToSpace(*pid, target.activeSpaceID) : StickyAdditions{};
    enqueuePending(fileManager, std::move(target), false, std::move(lent));
    system_.workspace.openFile(path);
}

void PinnedItemLauncher::enqueuePending(const std::string& bundleID, Target target, bool postRouteActivate,
                                        StickyAdditions stickyAdditions) {
    pending_.push_back({.bundleID = bundleID,
                        .knownIDs = std::move(target.knownIDs),
                        .targetScreen = target.screen,
                        .activeSpaceID = target.activeSpaceID,
                        .stickyAdditions = std::move(stickyAdditions),
                        .postRouteActivate = postRouteActivate,
                        .deadline = system_.mainLoop.now() + kPatience});
    const uint64_t expiration = ++lastExpiration_;
    expirations_[expiration] = system_.mainLoop.after(kCheckDelay, [this, expiration] {
        expirations_.erase(expiration);
        expirePending();
    });
}

void PinnedItemLauncher::expirePending() {
    const Instant now = system_.mainLoop.now();
    const auto isWaiting = [now](const PendingLaunch& launch) { return launch.deadline >= now; };
    const auto firstExpired = std::stable_partition(pending_.begin(), pending_.end(), isWaiting);
    const std::vector<PendingLaunch> expired(std::make_move_iterator(firstExpired),
                                             std::make_move_iterator(pending_.end()));
    pending_.erase(firstExpired, pending_.end());
    for (const PendingLaunch& launch : expired) cleanupStickyAdditions(launch.stickyAdditions);
}

void PinnedItemLauncher::windowsPublished() {
    if (pending_.empty() || std::exchange(isProcessingDue_, true)) return;
    system_.mainLoop.post(lifetime_.whileAlive([this] {
        isProcessingDue_ = false;
        processWindows(*WindowMapRef(store_.windows().value()));
    }));
}

void PinnedItemLauncher::processWindows(const WindowMap& windows) {
    for (const auto& [id, snapshot] : windows) {
        if (pending_.empty()) return;
        if (snapshot.isWindowless) continue;
        const auto match = std::ranges::find_if(pending_, [&snapshot](const PendingLaunch& launch) {
            return launch.bundleID == snapshot.bundleID && !launch.knownIDs.contains(snapshot.id);
        });
        if (match == pending_.end()) continue;
        const PendingLaunch launch = std::move(*match);
        pending_.erase(match);
        for (PendingLaunch& later : pending_) later.knownIDs.insert(id);
        arrived(snapshot, launch);
    }
}

void PinnedItemLauncher::arrived(const WindowSnapshot& snapshot, const PendingLaunch& launch) {
    route(snapshot, launch);
    if (launch.postRouteActivate && system_.workspace.runningApplication(snapshot.pid))
        system_.workspace.activate(snapshot.pid);
    cleanupStickyAdditions(launch.stickyAdditions);
}

void PinnedItemLauncher::route(const WindowSnapshot& snapshot, const PendingLaunch& launch) {
    const auto target = screen(launch.targetScreen);
    if (!target) return;  // unplugged meanwhile: the window is where the system put it
    if (launch.activeSpaceID && snapshot.cgWindowID) {
        const WindowNumber window = *snapshot.cgWindowID;
        system_.spaceQuery.add(window, {*launch.activeSpaceID});
        std::set<SpaceID> others = system_.spaceQuery.spaces(window);
        others.erase(*launch.activeSpaceID);
        system_.spaceQuery.remove(window, others);
    }
    moveWindow_(snapshot.id, *target);
}

StickyAdditions PinnedItemLauncher::stickAppWindowsToSpace(ProcessID pid, std::optional<SpaceID> space) {
    StickyAdditions additions;
    if (!space) return additions;
    for (const WindowSnapshot& snapshot : store_.snapshot(pid)) {
        if (!snapshot.cgWindowID || system_.spaceQuery.spaces(*snapshot.cgWindowID).contains(*space)) continue;
        system_.spaceQuery.add(*snapshot.cgWindowID, {*space});
        additions[*snapshot.cgWindowID].insert(*space);
    }
    return additions;
}

void PinnedItemLauncher::cleanupStickyAdditions(const StickyAdditions& additions) {
    for (const auto& [window, spaces] : additions) system_.spaceQuery.remove(window, spaces);
}

std::optional<Screen> PinnedItemLauncher::screen(DisplayID id) const {
    const std::vector<Screen> screens = system_.screens.screens();
    const auto found = std::ranges::find(screens, std::optional(id), &Screen::displayID);
    return found == screens.end() ? std::nullopt : std::optional(*found);
}

std::optional<ProcessID> PinnedItemLauncher::firstRunning(const std::string& bundleID) const {
    const auto running = system_.workspace.runningApplications();
    const auto found = std::ranges::find(running, std::optional(bundleID), &RunningApplication::bundleID);
    return found == running.end() ? std::nullopt : std::optional(found->pid);
}

bool PinnedItemLauncher::hasWindows(ProcessID pid) const {
    const auto windows = store_.snapshot(pid);
    return !std::ranges::all_of(windows, &WindowSnapshot::isWindowless);
}

}  // namespace morvel
