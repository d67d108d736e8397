// Each call goes to one function of the server; lists are read entry by entry.
#include "Platform/Mac/Windows/MacWindowServer.h"

#include <algorithm>
#include <limits>

#include "Platform/Mac/Windows/ManagedDisplays.h"
#include "Platform/Mac/apple/CoreGraphics.h"

namespace morvel::mac {

namespace {

/// A whole number that fits T; nothing otherwise.
template <typename T>
std::optional<T> numberIn(CFTypeRef dictionary, CFStringRef key) {
    const auto number = integerFrom(valueIn(dictionary, key));
    if (!number || *number < std::int64_t{std::numeric_limits<T>::min()} ||
        *number > std::int64_t{std::numeric_limits<T>::max()}) {
        return std::nullopt;
    }
    return static_cast<T>(*number);
}

/// An empty rectangle when the entry has none.
Rect<AXSpace> boundsIn(CFTypeRef entry) {
    CGRect bounds;
    const auto dictionary = cfCast<CFDictionaryRef>(valueIn(entry, kCGWindowBounds));
    if (!dictionary || !CGRectMakeWithDictionaryRepresentation(dictionary, &bounds)) return {};
    return {bounds.origin.x, bounds.origin.y, bounds.size.width, bounds.size.height};
}

/// Nothing for what has no window number.
std::optional<ListedWindow> windowFrom(CFTypeRef entry) {
    const auto number = numberIn<std::uint32_t>(entry, kCGWindowNumber);
    if (!number) return std::nullopt;
    ListedWindow window{.number = WindowNumber(*number),
                        .owner = {},
                        .layer = numberIn<int>(entry, kCGWindowLayer),
                        .bounds = boundsIn(entry),
                        .ownerName = stringFrom(valueIn(entry, kCGWindowOwnerName)).value_or(""),
                        .name = stringFrom(valueIn(entry, kCGWindowName)).value_or("")};
    if (const auto owner = numberIn<std::int32_t>(entry, kCGWindowOwnerPID)) window.owner = ProcessID(*owner);
    return window;
}

std::vector<ListedWindow> listed(CGWindowListOption options, CGWindowID relativeTo) {
    const auto entries = CFRef<CFArrayRef>::adopt(CGWindowListCopyWindowInfo(options, relativeTo));
    std::vector<ListedWindow> windows;
    for (const CFTypeRef entry : elementsOf(entries.get())) {
        if (auto window = windowFrom(entry)) windows.push_back(std::move(*window));
    }
    return windows;
}

}  // namespace

std::optional<SpaceID> MacWindowServer::activeSpace() {
    auto* const function = functions_.activeSpace.get();
    if (!function) return std::nullopt;
    const std::uint64_t space = function(functions_.connection());
    if (space == 0) return std::nullopt;  // no Space has this number
    return SpaceID(space);
}

std::optional<std::vector<ManagedDisplay>> MacWindowServer::managedDisplaySpaces() {
    auto* const function = functions_.copyManagedDisplaySpaces.get();
    if (!function) return std::nullopt;
    const auto displays = CFRef<CFArrayRef>::adopt(function(functions_.connection()));
    if (!cfCast<CFArrayRef>(displays.get())) return std::nullopt;
    return managedDisplaysFrom(displays.get());
}

std::optional<std::vector<SpaceID>> MacWindowServer::spacesOf(WindowNumber window) {
    constexpr std::uint32_t kAllSpaces = 7;
    auto* const function = functions_.copySpacesForWindows.get();
    if (!function) return std::nullopt;
    const auto windows = makeWindowIDArray({window});
    const auto spaces = CFRef<CFArrayRef>::adopt(function(functions_.connection(), kAllSpaces, windows.get()));
    if (!cfCast<CFArrayRef>(spaces.get())) return std::nullopt;
    return spaceIDsFrom(spaces.get());
}

void MacWindowServer::addToSpaces(WindowNumber window, const std::vector<SpaceID>& spaces) {
    auto* const function = functions_.addWindowsToSpaces.get();
    if (!function || spaces.empty()) return;
    function(functions_.connection(), makeWindowIDArray({window}).get(), makeSpaceIDArray(spaces).get());
    readBack(window, spaces);
}

void MacWindowServer::removeFromSpaces(WindowNumber window, const std::vector<SpaceID>& spaces) {
    auto* const function = functions_.removeWindowsFromSpaces.get();
    if (!function || spaces.empty()) return;
    const auto now = spacesOf(window);
    if (now && std::ranges::all_of(*now, [&](SpaceID space) { return std::ranges::count(spaces, space) > 0; })) return;
    function(functions_.connection(), makeWindowIDArray({window}).get(), makeSpaceIDArray(spaces).get());
}

void MacWindowServer::moveToSpace(WindowNumber window, SpaceID space) {
    auto* const function = functions_.moveWindowsToManagedSpace.get();
    if (!function) return;
    function(functions_.connection(), makeWindowIDArray({window}).get(), space.value);
    readBack(window, {space});
}

void MacWindowServer::readBack(WindowNumber window, const std::vector<SpaceID>& spaces) {
    if (hasLoggedRefusal_) return;
    const auto now = spacesOf(window);
    // A window on none is hidden or gone, which says nothing about the system.
    if (!now || now->empty()) return;
    if (std::ranges::all_of(spaces, [&](SpaceID space) { return std::ranges::count(*now, space) > 0; })) return;
    hasLoggedRefusal_ = true;
    log_.error("this system does not move windows of other programs to another Space");
}

Subscription MacWindowServer::observeSpaceEvents(std::function<void(uint32_t)> changed) {
    return events_.observe(std::move(changed));
}

std::vector<ListedWindow> MacWindowServer::windowList(WindowListScope scope) {
    const auto which = scope == WindowListScope::OnScreen ? kCGWindowListOptionOnScreenOnly : kCGWindowListOptionAll;
    return listed(which | kCGWindowListExcludeDesktopElements, kCGNullWindowID);
}

std::optional<int> MacWindowServer::layerOf(WindowNumber window) {
    for (const ListedWindow& entry : listed(kCGWindowListOptionIncludingWindow, window.value)) {
        if (entry.number == window) return entry.layer;
    }
    return std::nullopt;
}

}  // namespace morvel::mac
