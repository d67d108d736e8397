#include "AutoHide/AutoHideGeometry.h"

#include <algorithm>

namespace morvel {

Rect<ScreenSpace> revealStrip(const Rect<ScreenSpace>& bar, MorvelEdge edge) {
    const double y = edge == MorvelEdge::Top ? bar.maxY() - kRevealStripThickness : bar.minY();
    return {bar.x, y, bar.width, kRevealStripThickness};
}

Rect<ScreenSpace> movedPastEdge(const Rect<ScreenSpace>& frame, MorvelEdge edge, double distance) {
    return {frame.x, frame.y + (edge == MorvelEdge::Top ? distance : -distance), frame.width, frame.height};
}

bool isOffEveryScreen(const Rect<ScreenSpace>& frame, const std::vector<Screen>& screens) {
    return std::ranges::none_of(screens, [&](const Screen& screen) {
        const Rect<ScreenSpace>& s = screen.frame;
        return frame.minX() < s.maxX() && s.minX() < frame.maxX() && frame.minY() < s.maxY() && s.minY() < frame.maxY();
    });
}

}  // namespace morvel
