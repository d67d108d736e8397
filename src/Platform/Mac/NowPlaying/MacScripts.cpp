#include "Platform/Mac/NowPlaying/MacScripts.h"

#include "Platform/Mac/apple/AppKit/NSWorkspace.h"
#include "Platform/Mac/apple/Foundation/NSAppleScript.h"
#include "Platform/Mac/objc/AutoreleasePool.h"

namespace morvel::mac {

bool MacScripts::isRunning(const std::string& bundleID) {
    const objc::AutoreleasePool pool;
    return NSRunningApplication::withBundleIdentifier(NSString::from(bundleID)).count() > 0;
}

std::optional<std::string> MacScripts::run(const std::string& source) {
    const objc::AutoreleasePool pool;
    const NSAppleScript script = NSAppleScript::from(NSString::from(source));
    if (!script) return std::nullopt;
    const NSString text = script.execute().stringValue();
    return text ? std::optional(text.text()) : std::nullopt;
}

}  // namespace morvel::mac
