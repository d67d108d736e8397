// The frame of the system's menu bar on a display.
#pragma once

#include <optional>
#include <vector>

#include "Platform/Screens.h"
#include "Platform/WindowServer.h"

namespace morvel::MenuBarFrameProbe {

/// Nothing while no menu bar is shown on the screen. `firstScreenHeight` converts between the coordinates.
std::optional<Rect<ScreenSpace>> frame(const std::vector<ListedWindow>& windows, const Screen& screen,
                                       double firstScreenHeight);

}  // namespace morvel::MenuBarFrameProbe
