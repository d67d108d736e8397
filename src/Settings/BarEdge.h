// The screen edge that the bars are docked to, in the words of the user interface.
#pragma once

#include "Settings/SettingsEnums.h"
#include "UI/Edge.h"

namespace morvel {

inline ui::Edge uiEdge(MorvelEdge barEdge) {
    return barEdge == MorvelEdge::Top ? ui::Edge::Top : ui::Edge::Bottom;
}

/// The side of its anchor on which a bar's popover opens: away from that edge.
inline ui::Edge popoverEdge(MorvelEdge barEdge) {
    return barEdge == MorvelEdge::Top ? ui::Edge::Bottom : ui::Edge::Top;
}

}  // namespace morvel
