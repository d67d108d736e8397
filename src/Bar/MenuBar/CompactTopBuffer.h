// The buffer that a compact top bar leaves for the status items at the right end of the menu bar.
#pragma once

#include <optional>
#include <vector>

#include "Platform/Screens.h"
#include "Settings/SettingsStore.h"

namespace morvel {

/// Between the bar and what the system shows beside it, in points.
inline constexpr double kCompactTopMargin = 8;

/// Where status items begin on one screen, in screen coordinates.
struct StatusItemXs {
    std::vector<double> listed;               ///< by the window list, ascending
    std::optional<double> probedLeftmost;     ///< by the accessibility probe: of all items
    std::optional<double> probedCollapsed{};  ///< the same: of those that the collapsed bar leaves uncovered
};

namespace CompactTopBuffer {

/// In points. Collapsed, a few items at the right end stay uncovered, and expanded all of them.
double effective(const Screen& screen, const SettingsStore& settings, const StatusItemXs& items, bool expanded);

}  // namespace CompactTopBuffer

}  // namespace morvel
