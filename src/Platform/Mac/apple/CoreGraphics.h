// Displays, window levels and the window server's list of windows. Rectangles are in global display coordinates: origin
// at the top left of the main display, y downwards.
#pragma once

#include <cstdint>

#include "Platform/Mac/apple/CF.h"
#include "Platform/Mac/apple/CGGeometry.h"

namespace morvel::mac {

using CGDirectDisplayID = std::uint32_t;
using CGWindowID = std::uint32_t;
using CGWindowLevel = std::int32_t;
using CGWindowLevelKey = std::int32_t;
using CGWindowListOption = std::uint32_t;

inline constexpr CGWindowLevelKey kCGStatusWindowLevelKey = 9;
inline constexpr CGWindowListOption kCGWindowListOptionAll = 0;
inline constexpr CGWindowListOption kCGWindowListOptionOnScreenOnly = 1;
inline constexpr CGWindowListOption kCGWindowListOptionIncludingWindow = 8;
inline constexpr CGWindowListOption kCGWindowListExcludeDesktopElements = 16;
inline constexpr CGWindowID kCGNullWindowID = 0;

extern "C" {
CGDirectDisplayID CGMainDisplayID();
CFUUIDRef CGDisplayCreateUUIDFromDisplayID(CGDirectDisplayID display);
CGWindowLevel CGWindowLevelForKey(CGWindowLevelKey key);
CFArrayRef CGWindowListCopyWindowInfo(CGWindowListOption options, CGWindowID relativeTo);
bool CGRectMakeWithDictionaryRepresentation(CFDictionaryRef dictionary, CGRect* rectangle);

extern const CFStringRef kCGWindowNumber;
extern const CFStringRef kCGWindowLayer;
extern const CFStringRef kCGWindowBounds;
extern const CFStringRef kCGWindowName;
extern const CFStringRef kCGWindowOwnerName;
extern const CFStringRef kCGWindowOwnerPID;
}

}  // namespace morvel::mac
