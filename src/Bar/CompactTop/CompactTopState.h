// How a bar shares the menu bar's strip of its display with the system.
#pragma once

#include <optional>

#include "Bar/Layout/RunningZoneWidths.h"

namespace morvel {

/// Lengths in points. As it is by default for every bar that is not in the compact mode at the top edge.
struct CompactTopState {
    double leftReserve = 0;   ///< for the front application's menu titles
    double rightReserve = 0;  ///< for the status items
    double toggleWidth = 0;   ///< what the expansion toggle covers at the bar's right end
    std::optional<RunningZoneLayout::NotchRange> notch;
    bool isExpanded = false;  ///< all status items are uncovered

    bool operator==(const CompactTopState&) const = default;
};

}  // namespace morvel
