// How a bar shares the menu bar's strip of its display with the system.
#pragma once

#include <optional>

#include "Bar/Layout/RunningZoneWidths.h"

namespace morvel {

/// Lengths in points. As it is by default for every bar that is not at the top edge; beside the menu bar or over it, a
/// bar keeps its contents clear of the notch.
struct CompactTopState {
    double leftReserve = 0;   ///< for the front application's menu titles
    double rightReserve = 0;  ///< for the status items
    double toggleWidth = 0;   ///< what the expansion toggle covers at the bar's right end
    double unseenEnd = 0;     ///< of the bar's right end, from a notch on that leaves no room after it
    std::optional<RunningZoneLayout::NotchRange> notch;  ///< where the bar's contents stand on both sides of it
    bool isExpanded = false;                             ///< all status items are uncovered

    bool operator==(const CompactTopState&) const = default;
};

/// The state of a bar on a display of this width. A notch that the bar ends before or begins after is none of its
/// business. Where the bar's end, with the toggle, would lie under the notch, nothing is shown from the notch on.
inline CompactTopState clearOfNotch(CompactTopState state, double displayWidth) {
    if (!state.notch) return state;
    const RunningZoneLayout::NotchRange notch = *state.notch;
    const double end = displayWidth - state.rightReserve;
    const bool isBeside = notch.end <= state.leftReserve || notch.start >= end;
    const bool hasRoomAfter = end - state.toggleWidth >= notch.end;
    if (!isBeside && hasRoomAfter) return state;
    if (!isBeside && notch.start > state.leftReserve) state.unseenEnd = end - notch.start;
    state.notch.reset();
    return state;
}

}  // namespace morvel
