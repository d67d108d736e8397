#include "Bar/MenuBar/CompactTopLeftBuffer.h"

#include <algorithm>

#include "Bar/MenuBar/CompactTopBuffer.h"
#include "Bar/MenuBar/MenuBarStrip.h"

namespace morvel::CompactTopLeftBuffer {

double effective(const Screen& screen, const SettingsStore& settings, std::optional<double> rightmostMenuTitleX) {
    if (!settings.autoDetectMacOSMenuWidth.value() || !hasMenuBar(screen) || !rightmostMenuTitleX) return 0;
    return std::max(*rightmostMenuTitleX - screen.frame.minX() + kCompactTopMargin, 0.0);
}

}  // namespace morvel::CompactTopLeftBuffer
