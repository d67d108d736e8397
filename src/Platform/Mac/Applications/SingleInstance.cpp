#include "Platform/Mac/Applications/SingleInstance.h"

#include <algorithm>
#include <string>

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

}  // namespace

bool handOverToRunningInstance() {
    const std::string identifier = ownIdentifier();
    if (identifier.empty()) return false;
    const std::int32_t own = NSRunningApplication::current().processIdentifier();
    const auto running = NSRunningApplication::withBundleIdentifier(NSString::from(identifier));
    const auto isOther = [own](const NSRunningApplication& application) {
        return application.processIdentifier() != own && !application.isTerminated();
    };
    if (std::ranges::none_of(running.elements<NSRunningApplication>(), isOther)) return false;
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
