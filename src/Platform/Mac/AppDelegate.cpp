// The delegate's class and its notices.
#include "Platform/Mac/AppDelegate.h"

#include "Platform/Mac/apple/AppKit/Selectors.h"
#include "Platform/Mac/objc/Subclass.h"

namespace morvel::mac {

NSObject AppDelegate::make(Callbacks callbacks) {
    using Delegate = objc::Subclass<AppDelegate>;
    [[maybe_unused]] static const objc::RawClass registered =
        Delegate("NSObject")
            .adopts("NSApplicationDelegate")
            .overrides<&AppDelegate::applicationDidFinishLaunching>(selectors::applicationDidFinishLaunching)
            .overrides<&AppDelegate::applicationWillTerminate>(selectors::applicationWillTerminate)
            .overrides<&AppDelegate::applicationShouldHandleReopen>(selectors::applicationShouldHandleReopen)
            .registered();
    return Delegate::create<NSObject>(std::make_unique<AppDelegate>(std::move(callbacks)), selectors::init);
}

void AppDelegate::applicationDidFinishLaunching(NSNotification) {
    if (callbacks_.launched) callbacks_.launched();
}

void AppDelegate::applicationWillTerminate(NSNotification) {
    if (callbacks_.quitting) callbacks_.quitting();
}

bool AppDelegate::applicationShouldHandleReopen(NSObject, bool) {
    if (callbacks_.reopened) callbacks_.reopened();
    return false;  // there is no window for AppKit to bring back
}

}  // namespace morvel::mac
