// Where the menu titles (File, Edit, View, …) of the application that owns the menu bar end.
#pragma once

#include <optional>

#include "Platform/Accessibility.h"

namespace morvel::MacOSMenuTitlesDetector {

/// The frame of the application's last menu title that is shown, on whichever display. Asks the application a few
/// questions; nothing when it has no menus or does not tell.
std::optional<Rect<AXSpace>> lastTitle(Accessibility& accessibility, ProcessID owner);

/// The right end of the last title if it starts on the display that this strip is the menu bar of. An application's
/// menus are told once, for the display that the person works on, so on the other displays there are none.
std::optional<double> rightmostMenuTitleX(const std::optional<Rect<AXSpace>>& lastTitle, const Rect<AXSpace>& strip);

}  // namespace morvel::MacOSMenuTitlesDetector
