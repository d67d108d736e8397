#include "Bar/MenuBar/MenuBarFrameProbe.h"

#include <cmath>

namespace morvel::MenuBarFrameProbe {

namespace {

/// The window server itself owns one window for each menu bar, at the main menu's level, over the whole width of its
/// display. Their owner and name are not asked for: they are translated, and names need a permission of their own.
constexpr int kMainMenuLevel = 24;
constexpr double kTolerance = 1;
/// A part of the display that is higher is no menu bar, whatever its level.
constexpr double kLargestShareOfHeight = 0.2;

}  // namespace

std::optional<Rect<ScreenSpace>> frame(const std::vector<ListedWindow>& windows, const Screen& screen,
                                       double firstScreenHeight) {
    const Rect<AXSpace> display = toAX(screen.frame, firstScreenHeight);
    for (const ListedWindow& window : windows) {
        const Rect<AXSpace>& bounds = window.bounds;
        if (window.layer == kMainMenuLevel && !bounds.isEmpty() && std::abs(bounds.x - display.x) <= kTolerance &&
            std::abs(bounds.y - display.y) <= kTolerance && std::abs(bounds.width - display.width) <= kTolerance &&
            bounds.height <= display.height * kLargestShareOfHeight)
            return toScreen(bounds, firstScreenHeight);
    }
    return std::nullopt;
}

}  // namespace morvel::MenuBarFrameProbe
