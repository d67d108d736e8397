// Running applications, what launches them, and the screens.
#pragma once

#include "Platform/Mac/apple/AppKit/NSControls.h"
#include "Platform/Mac/apple/Foundation/NSDate.h"
#include "Platform/Mac/apple/Foundation/NSNotificationCenter.h"
#include "Platform/Mac/apple/Foundation/NSURL.h"

namespace morvel::mac {

inline constexpr NSUInteger NSApplicationActivateIgnoringOtherApps = 2;

class NSRunningApplication : public NSObject {
public:
    static constexpr const char* kClass = "NSRunningApplication";
    using NSObject::NSObject;

    /// Empty when no application has the process identifier.
    static NSRunningApplication withPid(std::int32_t pid) {
        return send<NSRunningApplication>(ClassOf<NSRunningApplication>{},
                                          "runningApplicationWithProcessIdentifier:"_sel, pid);
    }
    /// This process.
    static NSRunningApplication current() {
        return send<NSRunningApplication>(ClassOf<NSRunningApplication>{}, "currentApplication"_sel);
    }
    static NSArray withBundleIdentifier(const NSString& identifier) {
        return send<NSArray>(ClassOf<NSRunningApplication>{}, "runningApplicationsWithBundleIdentifier:"_sel,
                             identifier);
    }
    std::int32_t processIdentifier() const { return send<std::int32_t>(*this, "processIdentifier"_sel); }
    NSInteger activationPolicy() const { return send<NSInteger>(*this, "activationPolicy"_sel); }
    NSString bundleIdentifier() const { return send<NSString>(*this, "bundleIdentifier"_sel); }
    NSString localizedName() const { return send<NSString>(*this, "localizedName"_sel); }
    NSImage icon() const { return send<NSImage>(*this, "icon"_sel); }
    /// Empty for processes that were not launched as applications.
    NSDate launchDate() const { return send<NSDate>(*this, "launchDate"_sel); }
    bool isActive() const { return send<bool>(*this, "isActive"_sel); }
    bool isTerminated() const { return send<bool>(*this, "isTerminated"_sel); }
    bool activate(NSUInteger options) const { return send<bool>(*this, "activateWithOptions:"_sel, options); }
    bool terminate() const { return send<bool>(*this, "terminate"_sel); }
    bool forceTerminate() const { return send<bool>(*this, "forceTerminate"_sel); }
};

class NSWorkspaceOpenConfiguration : public NSObject {
public:
    static constexpr const char* kClass = "NSWorkspaceOpenConfiguration";
    using NSObject::NSObject;

    static NSWorkspaceOpenConfiguration configuration() {
        return send<NSWorkspaceOpenConfiguration>(ClassOf<NSWorkspaceOpenConfiguration>{}, "configuration"_sel);
    }
    void setActivates(bool activates) const { send(*this, "setActivates:"_sel, activates); }
    void setCreatesNewApplicationInstance(bool creates) const {
        send(*this, "setCreatesNewApplicationInstance:"_sel, creates);
    }
};

class NSWorkspace : public NSObject {
public:
    static constexpr const char* kClass = "NSWorkspace";
    using NSObject::NSObject;

    static NSWorkspace shared() { return send<NSWorkspace>(ClassOf<NSWorkspace>{}, "sharedWorkspace"_sel); }
    NSNotificationCenter notificationCenter() const {
        return send<NSNotificationCenter>(*this, "notificationCenter"_sel);
    }
    NSArray runningApplications() const { return send<NSArray>(*this, "runningApplications"_sel); }
    NSRunningApplication frontmostApplication() const {
        return send<NSRunningApplication>(*this, "frontmostApplication"_sel);
    }
    NSRunningApplication menuBarOwningApplication() const {
        return send<NSRunningApplication>(*this, "menuBarOwningApplication"_sel);
    }
    NSURL urlForApplication(const NSString& bundleIdentifier) const {
        return send<NSURL>(*this, "URLForApplicationWithBundleIdentifier:"_sel, bundleIdentifier);
    }
    bool accessibilityDisplayShouldReduceMotion() const {
        return send<bool>(*this, "accessibilityDisplayShouldReduceMotion"_sel);
    }
    NSImage iconForFile(const NSString& path) const { return send<NSImage>(*this, "iconForFile:"_sel, path); }
    bool openURL(const NSURL& url) const { return send<bool>(*this, "openURL:"_sel, url); }
    /// Returns before the application has been opened; whether it was is not told.
    void openApplication(const NSURL& url, const NSWorkspaceOpenConfiguration& configuration) const {
        const Block<void(NSRunningApplication, NSObject)> noCompletion;
        send(*this, "openApplicationAtURL:configuration:completionHandler:"_sel, url, configuration, noCompletion);
    }
    void activateFileViewerSelecting(const NSArray& urls) const {
        send(*this, "activateFileViewerSelectingURLs:"_sel, urls);
    }
};

class NSScreen : public NSObject {
public:
    static constexpr const char* kClass = "NSScreen";
    using NSObject::NSObject;

    /// The first one holds the origin of the coordinates.
    static NSArray screens() { return send<NSArray>(ClassOf<NSScreen>{}, "screens"_sel); }
    CGRect frame() const { return send<CGRect>(*this, "frame"_sel); }
    CGRect visibleFrame() const { return send<CGRect>(*this, "visibleFrame"_sel); }
    /// What is left beside a camera housing; empty rectangles on a screen without one.
    CGRect auxiliaryTopLeftArea() const { return send<CGRect>(*this, "auxiliaryTopLeftArea"_sel); }
    CGRect auxiliaryTopRightArea() const { return send<CGRect>(*this, "auxiliaryTopRightArea"_sel); }
    NSString localizedName() const { return send<NSString>(*this, "localizedName"_sel); }
    NSDictionary deviceDescription() const { return send<NSDictionary>(*this, "deviceDescription"_sel); }
};

}  // namespace morvel::mac
