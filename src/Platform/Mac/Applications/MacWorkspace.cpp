// Records from NSRunningApplication, and the workspace's notices with the application they are about.
#include "Platform/Mac/Applications/MacWorkspace.h"

#include <bit>

#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Platform/Mac/apple/AppKit/NSWorkspace.h"
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "Platform/ProcessProbe.h"
#include "Util/WebAddress.h"

namespace morvel::mac {

namespace {

std::optional<std::string> textOrNothing(const NSString& string) {
    if (!string) return std::nullopt;
    return string.text();
}

ActivationPolicy policyFrom(NSApplicationActivationPolicy policy) {
    if (policy == NSApplicationActivationPolicyRegular) return ActivationPolicy::Regular;
    if (policy == NSApplicationActivationPolicyAccessory) return ActivationPolicy::Accessory;
    return ActivationPolicy::Prohibited;
}

/// The moment of the launch tells processes of one number apart. It stays readable from the notice of the end, when
/// the process itself can no longer be asked. Processes that were not launched as applications have none.
std::uint64_t instanceOf(const NSRunningApplication& application) {
    const NSDate launched = application.launchDate();
    return launched ? std::bit_cast<std::uint64_t>(launched.timeIntervalSince1970()) : 0;
}

/// Nothing for nil, and for an application that has no process any more.
std::optional<ProcessID> processOf(const NSRunningApplication& application) {
    const std::int32_t pid = application.processIdentifier();
    if (pid <= 0) return std::nullopt;
    return ProcessID(pid);
}

/// Nothing where there is no process.
std::optional<RunningApplication> recordFrom(const NSRunningApplication& application) {
    const auto pid = processOf(application);
    if (!pid) return std::nullopt;
    return RunningApplication{.pid = *pid,
                              .instance = instanceOf(application),
                              .bundleID = textOrNothing(application.bundleIdentifier()),
                              .localizedName = textOrNothing(application.localizedName()),
                              .policy = policyFrom(application.activationPolicy())};
}

/// Empty for what is no absolute path; for a text that cannot be one, asking for the URL raises an exception.
NSURL fileURL(const std::string& path) {
    return path.starts_with('/') && NSString::from(path) ? NSURL::file(path) : NSURL();
}

Subscription observe(objc::RawObject name, std::function<void(const NSNotification&)> notified) {
    return NSWorkspace::shared().notificationCenter().observe(NSString(name), std::move(notified));
}

Subscription observeApplications(objc::RawObject name, Workspace::ApplicationNotice notice) {
    return observe(name, [notice = std::move(notice)](const NSNotification& notification) {
        const Id about = notification.userInfo().at(NSString(NSWorkspaceApplicationKey));
        if (const auto record = recordFrom(objc::as<NSRunningApplication>(about))) notice(*record);
    });
}

}  // namespace

std::vector<RunningApplication> MacWorkspace::runningApplications() {
    const objc::AutoreleasePool pool;
    std::vector<RunningApplication> records;
    for (const auto& application : NSWorkspace::shared().runningApplications().elements<NSRunningApplication>()) {
        if (auto record = recordFrom(application)) records.push_back(std::move(*record));
    }
    return records;
}

std::optional<RunningApplication> MacWorkspace::runningApplication(ProcessID pid) {
    const objc::AutoreleasePool pool;
    return recordFrom(NSRunningApplication::withPid(pid.value));
}

std::optional<ProcessID> MacWorkspace::frontmostApplication() {
    return processOf(NSWorkspace::shared().frontmostApplication());
}

std::optional<ProcessID> MacWorkspace::menuBarOwner() {
    return processOf(NSWorkspace::shared().menuBarOwningApplication());
}

void MacWorkspace::activate(ProcessID pid) {
    NSRunningApplication::withPid(pid.value).activate(NSApplicationActivateIgnoringOtherApps);
}

void MacWorkspace::terminate(ProcessID pid) {
    NSRunningApplication::withPid(pid.value).terminate();
}

void MacWorkspace::forceTerminate(ProcessID pid) {
    NSRunningApplication::withPid(pid.value).forceTerminate();
}

bool MacWorkspace::isProcessAlive(ProcessID pid) {
    return killProbe(pid);
}

std::optional<std::string> MacWorkspace::locate(const std::string& bundleID) {
    const NSString identifier = NSString::from(bundleID);
    if (!identifier) return std::nullopt;
    return textOrNothing(NSWorkspace::shared().urlForApplication(identifier).path());
}

std::string MacWorkspace::homeFolder() {
    return NSString::from("~").expandingTilde().text();
}

void MacWorkspace::openApplication(const std::string& path, const OpenApplication& how) {
    const NSURL url = fileURL(path);
    const auto configuration = NSWorkspaceOpenConfiguration::configuration();
    // Without one of them an exception is raised.
    if (!url || !configuration) return;
    configuration.setActivates(how.activates);
    if (how.createsNewInstance) configuration.setCreatesNewApplicationInstance(true);
    NSWorkspace::shared().openApplication(url, configuration);
}

void MacWorkspace::openFile(const std::string& path) {
    if (const NSURL url = fileURL(path)) NSWorkspace::shared().openURL(url);
}

void MacWorkspace::openPage(const std::string& address) {
    const NSURL url = isSecureWebAddress(address) && NSString::from(address) ? NSURL::parse(address) : NSURL();
    if (url) NSWorkspace::shared().openURL(url);
}

void MacWorkspace::revealInFileManager(const std::string& path) {
    const NSURL url = fileURL(path);
    if (url) NSWorkspace::shared().activateFileViewerSelecting(NSArray::from(std::vector{url}));
}

Subscription MacWorkspace::observeLaunched(ApplicationNotice notice) {
    return observeApplications(NSWorkspaceDidLaunchApplicationNotification, std::move(notice));
}

Subscription MacWorkspace::observeTerminated(ApplicationNotice notice) {
    return observeApplications(NSWorkspaceDidTerminateApplicationNotification, std::move(notice));
}

Subscription MacWorkspace::observeActivated(ApplicationNotice notice) {
    return observeApplications(NSWorkspaceDidActivateApplicationNotification, std::move(notice));
}

Subscription MacWorkspace::observeActiveSpaceChanged(std::function<void()> notice) {
    return observe(NSWorkspaceActiveSpaceDidChangeNotification,
                   [notice = std::move(notice)](const NSNotification&) { notice(); });
}

}  // namespace morvel::mac
