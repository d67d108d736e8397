#include "Bar/MenuBar/CompactTopBuffer.h"

#include <algorithm>

#include "Bar/MenuBar/MacOSMenuExtrasDetector.h"
#include "Bar/MenuBar/MenuBarStrip.h"

namespace morvel::CompactTopBuffer {

namespace {

/// Clock and Control Center fit into the least buffer at their usual widths, also while they cannot be measured well.
constexpr double kLeast = 100;
constexpr double kLargestShare = 0.6;  // of the screen's width; the bar must stay usable

double bufferFrom(double x, const Screen& screen) {
    const double buffer = screen.frame.maxX() - x + kCompactTopMargin;
    return std::min(std::max(buffer, kLeast), kLargestShare * screen.frame.width);
}

double fullBuffer(const Screen& screen, const SettingsStore& settings, const StatusItemXs& items) {
    if (settings.autoDetectMacOSItemsWidth.value()) {
        if (!items.listed.empty()) return bufferFrom(items.listed.front(), screen);
        if (items.probedLeftmost) return bufferFrom(*items.probedLeftmost, screen);
    }
    return settings.compactTopRightBuffer.value();
}

}  // namespace

double effective(const Screen& screen, const SettingsStore& settings, const StatusItemXs& items, bool expanded) {
    if (!hasMenuBar(screen)) return 0;
    if (expanded) return fullBuffer(screen, settings, items);
    const int count = settings.compactTopCollapsedItemCount.value();
    const auto x = items.probedCollapsed ? items.probedCollapsed
                                         : MacOSMenuExtrasDetector::systemAreaLeftmostX(items.listed, count);
    return x ? bufferFrom(*x, screen) : fullBuffer(screen, settings, items);
}

}  // namespace morvel::CompactTopBuffer
