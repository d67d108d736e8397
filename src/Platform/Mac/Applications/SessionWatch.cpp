#include "Platform/Mac/Applications/SessionWatch.h"

#include "Platform/Mac/apple/AppKit/NSWorkspace.h"
#include "Platform/Mac/apple/Foundation/NSNotificationCenter.h"

namespace morvel::mac {

namespace {

// What the login window tells everybody. No header declares these names; they have been the same since macOS 10.7. See
// that they still come with `log stream --predicate 'eventMessage CONTAINS "screenIsLocked"'` while locking the screen.
constexpr const char* kScreenIsLocked = "com.apple.screenIsLocked";
constexpr const char* kScreenIsUnlocked = "com.apple.screenIsUnlocked";

}  // namespace

SessionWatch::SessionWatch() {
    const auto watch = [this](const NSNotificationCenter& center, const NSString& name, bool SessionWatch::*part,
                              bool value) {
        notices_.push_back(center.observe(name, [this, part, value](const NSNotification&) { set(part, value); }));
    };
    const NSNotificationCenter workspace = NSWorkspace::shared().notificationCenter();
    watch(workspace, NSString(NSWorkspaceSessionDidResignActiveNotification), &SessionWatch::isShown_, false);
    watch(workspace, NSString(NSWorkspaceSessionDidBecomeActiveNotification), &SessionWatch::isShown_, true);
    watch(workspace, NSString(NSWorkspaceScreensDidSleepNotification), &SessionWatch::isAwake_, false);
    watch(workspace, NSString(NSWorkspaceScreensDidWakeNotification), &SessionWatch::isAwake_, true);
    const NSDistributedNotificationCenter everybody = NSDistributedNotificationCenter::defaultCenter();
    watch(everybody, NSString::from(kScreenIsLocked), &SessionWatch::isUnlocked_, false);
    watch(everybody, NSString::from(kScreenIsUnlocked), &SessionWatch::isUnlocked_, true);
}

void SessionWatch::set(bool SessionWatch::*part, bool value) {
    const bool wasActive = isActive();
    this->*part = value;
    if (!wasActive && isActive()) activated_.emit();
}

}  // namespace morvel::mac
