#include "Platform/Mac/MacHost.h"

#include "Platform/Mac/Applications/MacInstalledApplications.h"
#include "Platform/Mac/Applications/SingleInstance.h"
#include "Platform/Mac/System/DispatchQueue.h"
#include "Platform/Mac/System/SignalWatch.h"

namespace morvel::mac {

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
            {.hasMenuBar = true, .hasDock = true, .switchesSpaces = true},
            &system_.loginItem(),
            &system_.shell()};
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
