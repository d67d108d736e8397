#include "Platform/Mac/Applications/SingleInstance.h"

#include <algorithm>
#include <string>
#include <utility>

#include "Platform/Mac/apple/AppKit/NSWorkspace.h"
#include "Platform/Mac/apple/Foundation/NSNotificationCenter.h"

namespace morvel::mac {

namespace {

/// Empty for a program that is not in a bundle; two of those know nothing of one another.
std::string ownIdentifier() {
    return NSRunningApplication::current().bundleIdentifier().text();
}

NSString noticeName(const std::string& identifier) {
    return NSString::from(identifier + ".openedAgain");
}

/// Whether the other process has come first. Of two that start in the same moment, each sees the other, and one of them
/// has to stay. What was not launched as an application has no moment; it counts as late beside one that runs.
bool wasThereBefore(const NSRunningApplication& other, const NSRunningApplication& own) {
    const NSDate others = other.launchDate(), ours = own.launchDate();
    if (!others || !ours) return true;
    return std::pair(others.timeIntervalSince1970(), other.processIdentifier()) <
           std::pair(ours.timeIntervalSince1970(), own.processIdentifier());
}

}  // namespace

bool handOverToRunningInstance() {
    const std::string identifier = ownIdentifier();
    if (identifier.empty()) return false;
    const NSRunningApplication own = NSRunningApplication::current();
    const auto running = NSRunningApplication::withBundleIdentifier(NSString::from(identifier));
    const auto isFirst = [&own](const NSRunningApplication& application) {
        return application.processIdentifier() != own.processIdentifier() && !application.isTerminated() &&
               wasThereBefore(application, own);
    };
    if (std::ranges::none_of(running.elements<NSRunningApplication>(), isFirst)) return false;
    NSDistributedNotificationCenter::defaultCenter().post(noticeName(identifier));
    return true;
}

Subscription observeFurtherInstances(std::function<void()> opened) {
    const std::string identifier = ownIdentifier();
    if (identifier.empty()) return {};
    return NSDistributedNotificationCenter::defaultCenter().observe(
        noticeName(identifier), [opened = std::move(opened)](const NSNotification&) { opened(); });
}

}  // namespace morvel::mac
