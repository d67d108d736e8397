#include "Bar/BarFrame.h"

#include <algorithm>

namespace morvel {

namespace {

/// An inset or height of this much or less is no menu bar but a rounding, or a hidden menu bar's hairline.
constexpr double kNoMenuBar = 5;

double menuBarInset(const Rect<ScreenSpace>& frame, const Rect<ScreenSpace>& visibleFrame) {
    return frame.maxY() - visibleFrame.maxY();
}

bool isCompactTop(const BarFrameInput& input) {
    return input.edge == MorvelEdge::Top && input.compactAtTop;
}

}  // namespace

double visibleFrameMaxYForHeightMatch(const BarFrameInput& input) {
    if (menuBarInset(input.screenFrame, input.screenVisibleFrame) > kNoMenuBar) return input.screenVisibleFrame.maxY();
    const double firstInset = menuBarInset(input.firstScreenFrame, input.firstScreenVisibleFrame);
    if (firstInset > kNoMenuBar) return input.screenFrame.maxY() - firstInset;
    return input.screenVisibleFrame.maxY();
}

double effectiveBarHeight(const BarFrameInput& input) {
    if (input.edge != MorvelEdge::Top || !input.matchMenuBarHeight) return input.barHeight;
    if (input.menuBarHeight && *input.menuBarHeight > kNoMenuBar) return *input.menuBarHeight;
    const double inset = input.screenFrame.maxY() - visibleFrameMaxYForHeightMatch(input);
    if (inset > kNoMenuBar) return inset;
    if (input.statusBarThickness > kNoMenuBar) return input.statusBarThickness;
    return input.barHeight;
}

Rect<ScreenSpace> barFrame(const BarFrameInput& input) {
    const Rect<ScreenSpace>& screen = input.screenFrame;
    double height = effectiveBarHeight(input);
    if (input.edge == MorvelEdge::Bottom) return {screen.minX(), screen.minY(), screen.width, height};
    if (!isCompactTop(input)) return {screen.minX(), screen.maxY() - height, screen.width, height};
    if (input.matchMenuBarHeight) {
        const double strip = screen.maxY() - visibleFrameMaxYForHeightMatch(input);
        height = std::min(std::max(height, 1.0), std::max(strip, 1.0));
    }
    const double width = std::max(screen.width - input.rightBuffer - input.leftBuffer, 1.0);
    return {screen.minX() + input.leftBuffer, screen.maxY() - height, width, height};
}

Rect<ScreenSpace> compactTopStripFrame(const Rect<ScreenSpace>& bar) {
    return {bar.maxX() - kCompactTopStripWidth, bar.minY(), kCompactTopStripWidth, bar.height};
}

}  // namespace morvel
