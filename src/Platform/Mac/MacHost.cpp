#include "Platform/Mac/MacHost.h"

#include "Platform/Mac/Applications/MacInstalledApplications.h"
#include "Platform/Mac/NowPlaying/MacScripts.h"
#include "Platform/Mac/System/DispatchQueue.h"
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
    return {system_.mainLoop(),
            system_.log(),
            system_.accessibility(),
            system_.windowServer(),
            system_.workspace(),
            system_.screens(),
            system_.defaults(),
            system_.icons(),
            toolkit_,
            [] { NSApplication::shared().terminate(); },
            [](const std::string& label) { return std::make_unique<DispatchQueue>(label); },
            std::make_shared<MacInstalledApplications>(),
            [] { return Date(std::chrono::system_clock::now()); },
            system_.httpClient(),
            programVersion(),
            systemVersion(),
            nullptr,
            std::make_shared<MacScripts>(),
            {.hasMenuBar = true, .hasDock = true, .switchesSpaces = true}};
}

void MacHost::run(AppDelegate::Callbacks application) {
    delegate_ = AppDelegate::make(std::move(application));
    application_.setDelegate(delegate_);
    // No Dock icon, and no main menu of its own.
    application_.setActivationPolicy(NSApplicationActivationPolicyAccessory);
    application_.run();
}

}  // namespace morvel::mac
