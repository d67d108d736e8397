// Which part of a display a bar keeps for itself, and how a window is kept out of it.
#pragma once

#include <optional>
#include <vector>

#include "Platform/Screens.h"
#include "Settings/SettingsEnums.h"
#include "Util/Geometry.h"

namespace morvel::ClampingMath {

/// Frames this close count as the same: applications and window servers round what they are given.
inline constexpr double kFrameTolerance = 1.5;

/// The strip along the screen's edge that a bar of this thickness reserves. None for a bar that stands beside the
/// menu bar, which keeps the strip clear already.
std::optional<Rect<ScreenSpace>> reservedRect(const Rect<ScreenSpace>& screen, MorvelEdge edge, double barHeight,
                                              bool isBesideMenuBar);

/// The frame that keeps a window of this screen out of the strip, or nothing if it needs no change or is wholly
/// inside. Only the end at the strip moves. Nothing too for a frame that is no place on any screen (not a number, say).
std::optional<Rect<ScreenSpace>> corrected(const Rect<ScreenSpace>& frame, const Rect<ScreenSpace>& screen,
                                           const std::optional<Rect<ScreenSpace>>& reservedRect, MorvelEdge edge);

/// The original frame, for a window that was shrunk and is not back there already.
std::optional<Rect<AXSpace>> restoreTarget(const Rect<AXSpace>& currentFrame,
                                           const std::optional<Rect<AXSpace>>& originalFrame, bool previouslyClamped,
                                           double tolerance = kFrameTolerance);

/// Whether origin, width and height each differ by at most the tolerance.
bool framesApproxEqual(const Rect<AXSpace>& a, const Rect<AXSpace>& b, double tolerance = kFrameTolerance);

/// The screen that shows most of the window, the earlier one of equals; null when none shows any of it.
const Screen* screenOf(const Rect<ScreenSpace>& window, const std::vector<Screen>& screens);

}  // namespace morvel::ClampingMath
