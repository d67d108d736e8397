// Putting the program together.
#include "Platform/Mac/MacHost.h"

#include "Platform/Mac/AppDelegate.h"

namespace morvel::mac {

MacHost::MacHost()
    : application_(NSApplication::shared()),
      toolkit_(system_.mainLoop()),
      appDelegate_({system_.mainLoop(), system_.log(), system_.accessibility(), system_.windowServer(),
                    system_.workspace(), system_.screens(), system_.defaults(), system_.icons(), toolkit_,
                    [] { NSApplication::shared().terminate(); }}),
      delegate_(AppDelegate::make({.launched = [this] { appDelegate_.applicationDidFinishLaunching(); },
                                   .quitting = [this] { appDelegate_.applicationWillTerminate(); }})) {
    application_.setDelegate(delegate_);
    // No Dock icon, and no main menu of its own.
    application_.setActivationPolicy(NSApplicationActivationPolicyAccessory);
}

MacHost::~MacHost() {
    application_.setDelegate(nullptr);
}

}  // namespace morvel::mac
