// The gap that a compact top bar leaves for the front application's menu titles.
#pragma once

#include <optional>

#include "Platform/Screens.h"
#include "Settings/SettingsStore.h"

namespace morvel::CompactTopLeftBuffer {

/// In points, never negative and without an upper bound: where the titles end the bar begins. `rightmostMenuTitleX` is
/// where they end on this screen, in screen coordinates; nothing when it cannot be told.
double effective(const Screen& screen, const SettingsStore& settings, std::optional<double> rightmostMenuTitleX);

}  // namespace morvel::CompactTopLeftBuffer
