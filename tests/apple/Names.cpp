// The strings that AppKit exports: names of notifications, appearances, roles, and keys of dictionaries.
#include "Platform/Mac/apple/AppKit/NSAppearance.h"
#include "Platform/Mac/apple/AppKit/NSPasteboard.h"
#include "Platform/Mac/apple/AppKit/NSScrollView.h"
#include "Platform/Mac/apple/Foundation/NSNotificationCenter.h"
#include "SystemObjects.h"

namespace morvel::mac {

namespace {

objc::RawObject name(const char* text) {
    return checked::runtime().makeImmortal(checked::makeString(text));
}

}  // namespace

extern "C" {
extern const objc::RawObject NSWorkspaceDidLaunchApplicationNotification =
    name("NSWorkspaceDidLaunchApplicationNotification");
extern const objc::RawObject NSWorkspaceDidTerminateApplicationNotification =
    name("NSWorkspaceDidTerminateApplicationNotification");
extern const objc::RawObject NSWorkspaceDidActivateApplicationNotification =
    name("NSWorkspaceDidActivateApplicationNotification");
extern const objc::RawObject NSWorkspaceActiveSpaceDidChangeNotification =
    name("NSWorkspaceActiveSpaceDidChangeNotification");
extern const objc::RawObject NSWorkspaceScreensDidSleepNotification = name("NSWorkspaceScreensDidSleepNotification");
extern const objc::RawObject NSWorkspaceScreensDidWakeNotification = name("NSWorkspaceScreensDidWakeNotification");
extern const objc::RawObject NSWorkspaceSessionDidBecomeActiveNotification =
    name("NSWorkspaceSessionDidBecomeActiveNotification");
extern const objc::RawObject NSWorkspaceSessionDidResignActiveNotification =
    name("NSWorkspaceSessionDidResignActiveNotification");
extern const objc::RawObject NSWorkspaceApplicationKey = name("NSWorkspaceApplicationKey");
extern const objc::RawObject NSApplicationDidChangeScreenParametersNotification =
    name("NSApplicationDidChangeScreenParametersNotification");
extern const objc::RawObject NSViewBoundsDidChangeNotification = name("NSViewBoundsDidChangeNotification");
extern const objc::RawObject NSAppearanceNameAqua = name("NSAppearanceNameAqua");
extern const objc::RawObject NSAppearanceNameDarkAqua = name("NSAppearanceNameDarkAqua");
extern const objc::RawObject NSFontAttributeName = name("NSFont");
extern const objc::RawObject NSAccessibilityButtonRole = name("AXButton");
extern const objc::RawObject NSAccessibilityGroupRole = name("AXGroup");
extern const objc::RawObject NSAccessibilityListRole = name("AXList");
extern const objc::RawObject NSSystemColorsDidChangeNotification = name("NSSystemColorsDidChangeNotification");
extern const objc::RawObject NSPasteboardURLReadingFileURLsOnlyKey = name("NSPasteboardURLReadingFileURLsOnlyKey");
}

}  // namespace morvel::mac
