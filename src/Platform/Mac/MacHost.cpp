#include "Platform/Mac/MacHost.h"

#include "Platform/Mac/Applications/MacInstalledApplications.h"
#include "Platform/Mac/Applications/SingleInstance.h"
#include "Platform/Mac/NowPlaying/MacScripts.h"
#include "Platform/Mac/System/DispatchQueue.h"
#include "Platform/Mac/System/SignalWatch.h"
#include "Platform/Mac/apple/Foundation/NSBundle.h"
#include "Platform/Mac/apple/Foundation/NSProcessInfo.h"
#include "Platform/Mac/objc/AutoreleasePool.h"

namespace morvel::mac {

namespace {

std::optional<std::string> programVersion() {
    const objc::AutoreleasePool pool;
    const auto version = objc::as<NSString>(NSBundle::main().info(NSString::from("CFBundleShortVersionString")));
    return version ? std::optional(version.text()) : std::nullopt;
}

std::string systemVersion() {
    const objc::AutoreleasePool pool;
    const NSOperatingSystemVersion version = NSProcessInfo::current().operatingSystemVersion();
    return std::to_string(version.majorVersion) + "." + std::to_string(version.minorVersion) + "." +
           std::to_string(version.patchVersion);
}

}  // namespace

Platform MacHost::platform() {
    return {.mainLoop = system_.mainLoop(),
            .log = system_.log(),
            .accessibility = system_.accessibility(),
            .windowServer = system_.windowServer(),
            .workspace = system_.workspace(),
            .screens = system_.screens(),
            .defaults = system_.defaults(),
            .icons = system_.icons(),
            .toolkit = toolkit_,
            .terminate = [] { NSApplication::shared().terminate(); },
            .makeWorkQueue = [](const std::string& label) { return std::make_unique<DispatchQueue>(label); },
            .installedApplications = std::make_shared<MacInstalledApplications>(),
            .wallClock = [] { return Date(std::chrono::system_clock::now()); },
            .httpClient = system_.httpClient(),
            .programVersion = programVersion(),
            .systemVersion = systemVersion(),
            .scriptRunner = std::make_shared<MacScripts>(),
            .features = {.hasMenuBar = true, .hasDock = true, .switchesSpaces = true},
            .loginItem = &system_.loginItem(),
            .shellCommands = &system_.shell()};
}

void MacHost::run(AppDelegate::Callbacks application) {
    if (application.reopened) furtherInstances_ = observeFurtherInstances(application.reopened);
    requestsToEnd_ = observeRequestsToEnd([] { NSApplication::shared().terminate(); });
    delegate_ = AppDelegate::make(std::move(application));
    application_.setDelegate(delegate_);
    // No Dock icon, and no main menu of its own.
    application_.setActivationPolicy(NSApplicationActivationPolicyAccessory);
    application_.run();
}

}  // namespace morvel::mac
