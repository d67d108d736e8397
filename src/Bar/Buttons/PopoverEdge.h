// The side of its anchor on which a bar's popover opens: away from the screen edge that the bar is docked to.
#pragma once

#include "Settings/SettingsEnums.h"
#include "UI/Edge.h"

namespace morvel {

inline ui::Edge popoverEdge(MorvelEdge barEdge) {
    return barEdge == MorvelEdge::Bottom ? ui::Edge::Top : ui::Edge::Bottom;
}

}  // namespace morvel
