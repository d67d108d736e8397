#include "Bar/Buttons/ButtonGeometry.h"

#include <algorithm>
#include <cmath>

#include "Bar/Layout/RunningZoneLayout.h"

namespace morvel::ButtonGeometry {

namespace {

// Narrower bounds than those of the decision whether to group: the decision counts with wide titles, the button
// does not let one title eat the bar.
constexpr double kMinTitleDrivenWidth = 80;

}  // namespace

std::optional<double> requiredWidth(bool isIconOnly, std::optional<double> provided) {
    if (isIconOnly) return RunningZoneLayout::kIconOnlyWidth;
    return provided;
}

double titleDrivenWidth(double labelWidth) {
    return std::clamp(std::ceil(labelWidth) + RunningZoneLayout::kTitleChrome, kMinTitleDrivenWidth,
                      RunningZoneLayout::kMaxFreeButtonWidth);
}

}  // namespace morvel::ButtonGeometry
