// Where on its display a bar stands and how high it is.
#pragma once

#include <optional>

#include "Settings/SettingsEnums.h"
#include "Util/Geometry.h"

namespace morvel {

/// What decides a bar's frame; lengths in points.
struct BarFrameInput {
    Rect<ScreenSpace> screenFrame;
    Rect<ScreenSpace> screenVisibleFrame;
    Rect<ScreenSpace> firstScreenFrame;  ///< of the first screen of the list, which has the menu bar
    Rect<ScreenSpace> firstScreenVisibleFrame;
    MorvelEdge edge = MorvelEdge::Bottom;
    bool compactAtTop = true;
    bool matchMenuBarHeight = true;
    double barHeight = 44;                ///< the person's own
    std::optional<double> menuBarHeight;  ///< as probed on this screen; absent when it was not found
    double statusBarThickness = 0;
    double leftBuffer = 0;   ///< kept free for menu titles; counts in compact mode
    double rightBuffer = 0;  ///< kept free for status items; counts in compact mode
};

/// The bar's height before compact mode bounds it: the menu bar's at the top edge if that is asked for and can be
/// found, else the person's own.
double effectiveBarHeight(const BarFrameInput& input);

/// The y of the menu bar's lower end on this screen, as far as it can be told from the screens' insets.
double visibleFrameMaxYForHeightMatch(const BarFrameInput& input);

Rect<ScreenSpace> barFrame(const BarFrameInput& input);

/// Of the small panel at the right end of a compact top bar, in points. No status item is exactly as wide.
inline constexpr double kCompactTopStripWidth = 21;

/// Where that panel stands: over the bar's right end, beside the right buffer, and at its full width even over a bar
/// that is narrower.
Rect<ScreenSpace> compactTopStripFrame(const Rect<ScreenSpace>& bar);

}  // namespace morvel
