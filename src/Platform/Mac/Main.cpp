// The entry point on macOS: an application without a Dock icon, run by its delegate.
#include "Platform/Mac/AppDelegate.h"
#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Platform/Mac/apple/SystemLog.h"
#include "Platform/Mac/objc/AutoreleasePool.h"

int main() {
    using namespace morvel::mac;
    const objc::AutoreleasePool pool;
    const NSApplication application = NSApplication::shared();
    const NSObject delegate =
        AppDelegate::make({.launched = [] { logLine(LogType::Default, "launched"); }, .quitting = {}});
    application.setDelegate(delegate);
    application.setActivationPolicy(NSApplicationActivationPolicyAccessory);
    application.run();
    return 0;
}
