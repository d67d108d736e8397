#include "Bar/FocusWheel.h"

#include <cmath>

namespace morvel {

int FocusWheel::turned(double notches, Instant now) {
    if (!std::isfinite(notches) || (lastStep_ && now - *lastStep_ < kInterval)) return 0;
    if (turned_ * notches < 0) turned_ = 0;  // the hand has turned back
    turned_ += notches;
    if (std::abs(turned_) < 1) return 0;
    const int step = turned_ < 0 ? -1 : 1;
    turned_ = 0;
    lastStep_ = now;
    return step;
}

std::optional<size_t> FocusWheel::next(std::optional<size_t> focused, size_t count, int step) {
    if (count == 0 || step == 0) return std::nullopt;
    if (!focused) return step > 0 ? 0 : count - 1;
    if (step > 0) return *focused + 1 < count ? std::optional(*focused + 1) : std::nullopt;
    return *focused > 0 ? std::optional(*focused - 1) : std::nullopt;
}

}  // namespace morvel
