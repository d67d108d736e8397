#include "Platform/Linux/Applications/XWorkspace.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

#include "Platform/Linux/Applications/FileManager.h"
#include "Platform/Linux/Applications/ProcessWatch.h"
#include "Platform/ProcessProbe.h"
#include "Util/WebAddress.h"

namespace morvel::x11 {

namespace {

constexpr Duration kStartingTime = std::chrono::seconds(2);

// Never a group, every process or the system's first one, whatever a window claims, nor ourselves.
bool maySignal(ProcessID pid) {
    return pid.value > 1 && pid.value != getpid();
}

}  // namespace

XWorkspace::XWorkspace(System system) : system_(system), launcher_(system.log) {
    subscriptions_.push_back(system_.clients.observe(
        [this](const ClientWindow& client, ClientChange change) { clientChanged(client, change); }));
    subscriptions_.push_back(system_.clients.observeActive([this] { activeChanged(); }));
    for (const ClientWindow* client : system_.clients.all()) clientChanged(*client, ClientChange::Added);
    activeChanged();
}

void XWorkspace::clientChanged(const ClientWindow& client, ClientChange change) {
    if (change == ClientChange::Added || change == ClientChange::Admission) {
        if (client.isAdmissible()) ensureApplication(client);
        windowShown(client);
    } else if (change == ClientChange::Removed) {
        // What is known of a process ends with it, not with its windows.
        const bool isOnlyItsWindows = client.pid.value < 0 || !killProbe(client.pid);
        if (isOnlyItsWindows && windowsOf(client.pid).empty()) ended(client.pid);
    }
}

void XWorkspace::windowShown(const ClientWindow& client) {
    const bool isMain = client.type() == ClientType::Normal || client.type() == ClientType::Dialog;
    const auto application = applications_.find(client.pid);
    if (isMain && client.isAdmissible() && application != applications_.end())
        application->second.lastActive = client.window;
}

void XWorkspace::ensureApplication(const ClientWindow& client) {
    const auto known = applications_.find(client.pid);
    if (known != applications_.end()) {
        if (client.pid.value < 0) return;
        const auto start = processStartTime(client.pid);
        if (!start || *start == known->second.record.instance) return;
        ended(client.pid);  // another process has the number by now
    }
    auto& application = applications_[client.pid];
    application.record = describe(client);
    application.order = ++lastOrder_;
    watchEnd(client.pid, application);
    const RunningApplication record = application.record;
    launched_.emit(record);
}

RunningApplication XWorkspace::describe(const ClientWindow& client) const {
    RunningApplication record;
    record.pid = client.pid;
    record.instance = processStartTime(client.pid).value_or(client.serial);
    const auto entry = system_.entries.findForClass(client.classInstance, client.className);
    if (entry) record.bundleID = entry->id;
    if (entry && !entry->name.empty())
        record.localizedName = entry->name;
    else if (!client.className.empty())
        record.localizedName = client.className;
    else
        record.localizedName = processName(client.pid);
    return record;
}

void XWorkspace::watchEnd(ProcessID pid, Application& application) {
    application.watch = watchProcess(system_.mainLoop, pid, [this, pid] { ended(pid); });
}

void XWorkspace::ended(ProcessID pid) {
    const auto found = applications_.find(pid);
    if (found == applications_.end()) return;
    const Application gone = std::move(found->second);
    applications_.erase(found);
    terminated_.emit(gone.record);
}

void XWorkspace::activeChanged() {
    const ClientWindow* active = system_.clients.active();
    const auto found = active ? applications_.find(active->pid) : applications_.end();
    const auto pid = found == applications_.end() ? std::nullopt : std::optional(active->pid);
    if (pid) found->second.lastActive = active->window;
    const bool isOther = pid != std::exchange(frontmost_, pid);
    if (!pid || !isOther) return;
    const RunningApplication record = found->second.record;
    activated_.emit(record);
}

std::vector<RunningApplication> XWorkspace::runningApplications() {
    std::vector<const Application*> inOrder;
    for (const auto& [pid, application] : applications_) inOrder.push_back(&application);
    std::sort(inOrder.begin(), inOrder.end(), [](const auto* a, const auto* b) { return a->order < b->order; });
    std::vector<RunningApplication> out;
    for (const Application* application : inOrder) out.push_back(application->record);
    return out;
}

std::optional<RunningApplication> XWorkspace::runningApplication(ProcessID pid) {
    const auto found = applications_.find(pid);
    return found == applications_.end() ? std::nullopt : std::optional(found->second.record);
}

std::optional<ProcessID> XWorkspace::frontmostApplication() {
    const ClientWindow* active = system_.clients.active();
    if (!active || !applications_.contains(active->pid)) return std::nullopt;
    return active->pid;
}

std::vector<const ClientWindow*> XWorkspace::windowsOf(ProcessID pid) const {
    auto windows = system_.clients.all();
    std::erase_if(windows, [pid](const ClientWindow* client) { return client->pid != pid || !client->isAdmissible(); });
    return windows;
}

void XWorkspace::activate(ProcessID pid) {
    const auto windows = windowsOf(pid);
    // Without a window there is nothing to bring to the front; most programs open one when they are started again.
    const auto entry = windows.empty() ? entryOf(pid) : std::nullopt;
    if (entry) openApplication(entry->path, {});
    if (windows.empty()) return;
    const auto application = applications_.find(pid);
    const ClientWindow* mostRecent = windows.back();
    for (const ClientWindow* client : windows)
        if (application != applications_.end() && application->second.lastActive == client->window) mostRecent = client;
    system_.requests.activateAny(*mostRecent);
}

void XWorkspace::terminate(ProcessID pid) {
    const auto windows = windowsOf(pid);
    for (const ClientWindow* client : windows) system_.requests.close(*client);
    if (windows.empty() && maySignal(pid)) ::kill(pid.value, SIGTERM);
}

void XWorkspace::forceTerminate(ProcessID pid) {
    if (maySignal(pid) && ::kill(pid.value, SIGKILL) == 0) return;
    for (const ClientWindow* client : windowsOf(pid)) system_.requests.kill(*client);
}

bool XWorkspace::isProcessAlive(ProcessID pid) {
    return pid.value < 0 ? applications_.contains(pid) : killProbe(pid);
}

std::optional<std::string> XWorkspace::locate(const std::string& bundleID) {
    const auto entry = system_.entries.find(bundleID);
    return entry && !entry->path.empty() ? std::optional(entry->path) : std::nullopt;
}

std::optional<DesktopEntry> XWorkspace::entryOf(ProcessID pid) const {
    const auto found = applications_.find(pid);
    if (found == applications_.end() || !found->second.record.bundleID) return std::nullopt;
    return system_.entries.find(*found->second.record.bundleID);
}

bool XWorkspace::canOpenNewWindow(ProcessID pid) const {
    const auto entry = entryOf(pid);
    return entry && !entry->newWindowAction.empty();
}

bool XWorkspace::openNewWindow(ProcessID pid) {
    const auto entry = entryOf(pid);
    if (!entry || entry->newWindowAction.empty()) return false;
    launcher_.openAction(entry->path, entry->newWindowAction);
    return true;
}

std::string XWorkspace::fileManager() {
    return system_.entries.findForType("inode/directory").value_or(DesktopEntry{}).id;
}

std::string XWorkspace::homeFolder() {
    return g_get_home_dir();
}

std::optional<ProcessID> XWorkspace::runningFrom(const std::string& entryPath) const {
    for (const auto& [pid, application] : applications_)
        if (const auto entry = entryOf(pid); entry && entry->path == entryPath) return pid;
    return std::nullopt;
}

void XWorkspace::openApplication(const std::string& path, const OpenApplication& how) {
    if (!path.starts_with('/')) return;
    if (how.createsNewInstance) return launcher_.openNewInstance(path);
    const auto running = runningFrom(path);
    if (running && !windowsOf(*running).empty()) {
        if (how.activates) activate(*running);
        return;
    }
    // A second click while the program still starts must not start another one.
    const Instant now = system_.mainLoop.now();
    std::erase_if(starts_, [now](const auto& start) { return now - start.second > kStartingTime; });
    if (starts_.emplace(path, now).second) launcher_.open(path);
}

void XWorkspace::openFile(const std::string& path) {
    if (path.starts_with('/')) launcher_.openFile(path);
}

void XWorkspace::openPage(const std::string& address) {
    if (isSecureWebAddress(address)) launcher_.openAddress(address);
}

void XWorkspace::revealInFileManager(const std::string& path) {
    revealFile(path, launcher_, system_.log);
}

Subscription XWorkspace::observeLaunched(ApplicationNotice notice) {
    return launched_.subscribe(std::move(notice));
}
Subscription XWorkspace::observeTerminated(ApplicationNotice notice) {
    return terminated_.subscribe(std::move(notice));
}
Subscription XWorkspace::observeActivated(ApplicationNotice notice) {
    return activated_.subscribe(std::move(notice));
}
Subscription XWorkspace::observeActiveSpaceChanged(std::function<void()> notice) {
    return system_.root.observeDesktops(std::move(notice));
}

}  // namespace morvel::x11
