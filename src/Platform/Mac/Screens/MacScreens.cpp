// NSScreen's list with Core Graphics' display numbers and identifiers.
#include "Platform/Mac/Screens/MacScreens.h"

#include <limits>

#include "Platform/Mac/apple/AppKit/NSStatusItem.h"
#include "Platform/Mac/apple/AppKit/NSWorkspace.h"
#include "Platform/Mac/apple/CFRef.h"
#include "Platform/Mac/apple/CoreGraphics.h"
#include "Platform/Mac/objc/AutoreleasePool.h"

namespace morvel::mac {

namespace {

Rect<ScreenSpace> rectFrom(const CGRect& r) {
    return {r.origin.x, r.origin.y, r.size.width, r.size.height};
}

std::optional<Rect<ScreenSpace>> areaFrom(const CGRect& r) {
    const Rect<ScreenSpace> area = rectFrom(r);
    return area.isEmpty() ? std::nullopt : std::optional(area);
}

std::optional<DisplayID> displayOf(const NSScreen& screen) {
    const auto number = integerFrom(screen.deviceDescription().at<NSObject>("NSScreenNumber").raw());
    if (!number || *number < 0 || *number > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
    return DisplayID(static_cast<std::uint32_t>(*number));
}

}  // namespace

std::vector<Screen> MacScreens::screens() {
    const objc::AutoreleasePool pool;
    std::vector<Screen> found;
    for (const NSScreen& screen : NSScreen::screens().elements<NSScreen>()) {
        found.push_back({displayOf(screen), screen.localizedName().text(), rectFrom(screen.frame()),
                         rectFrom(screen.visibleFrame()), areaFrom(screen.auxiliaryTopLeftArea()),
                         areaFrom(screen.auxiliaryTopRightArea())});
    }
    return found;
}

DisplayID MacScreens::mainDisplay() {
    return DisplayID(CGMainDisplayID());
}

std::optional<std::string> MacScreens::uuidString(DisplayID display) {
    const auto uuid = CFRef<CFUUIDRef>::adopt(CGDisplayCreateUUIDFromDisplayID(display.value));
    if (!uuid) return std::nullopt;
    return stringFrom(CFRef<CFStringRef>::adopt(CFUUIDCreateString(nullptr, uuid.get())).get());
}

double MacScreens::statusBarThickness() {
    return NSStatusBar::system().thickness();
}

Subscription MacScreens::observeChanges(std::function<void()> changed) {
    return NSNotificationCenter::defaultCenter().observe(
        NSString(NSApplicationDidChangeScreenParametersNotification),
        [changed = std::move(changed)](const NSNotification&) { changed(); });
}

}  // namespace morvel::mac
