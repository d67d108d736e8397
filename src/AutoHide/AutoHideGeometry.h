// Where a bar stands that hides at its edge, and what brings it back.
#pragma once

#include <vector>

#include "Platform/Screens.h"
#include "Settings/SettingsEnums.h"
#include "Util/Geometry.h"

namespace morvel {

/// How thick the strip is that waits for the pointer, in points.
inline constexpr double kRevealStripThickness = 2;

/// The strip along the outer edge of a bar that is shown at `bar`.
Rect<ScreenSpace> revealStrip(const Rect<ScreenSpace>& bar, MorvelEdge edge);

/// The frame moved past the edge by this many points.
Rect<ScreenSpace> movedPastEdge(const Rect<ScreenSpace>& frame, MorvelEdge edge, double distance);

/// Whether nothing that stands at `frame` shows on any display.
bool isOffEveryScreen(const Rect<ScreenSpace>& frame, const std::vector<Screen>& screens);

}  // namespace morvel
