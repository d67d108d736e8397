#include "Clamping/ClampingMath.h"

#include <algorithm>
#include <cmath>

namespace morvel::ClampingMath {

namespace {

bool isFinite(const Rect<ScreenSpace>& r) {
    return std::isfinite(r.x) && std::isfinite(r.y) && std::isfinite(r.width) && std::isfinite(r.height);
}

double overlap(const Rect<ScreenSpace>& a, const Rect<ScreenSpace>& b) {
    const double width = std::min(a.maxX(), b.maxX()) - std::max(a.minX(), b.minX());
    const double height = std::min(a.maxY(), b.maxY()) - std::max(a.minY(), b.minY());
    return width > 0 && height > 0 ? width * height : 0;
}

}  // namespace

std::optional<Rect<ScreenSpace>> reservedRect(const Rect<ScreenSpace>& screen, MorvelEdge edge, double barHeight,
                                              bool isBesideMenuBar) {
    if (edge == MorvelEdge::Bottom) return Rect<ScreenSpace>{screen.minX(), screen.minY(), screen.width, barHeight};
    if (isBesideMenuBar) return std::nullopt;
    return Rect<ScreenSpace>{screen.minX(), screen.maxY() - barHeight, screen.width, barHeight};
}

std::optional<Rect<ScreenSpace>> corrected(const Rect<ScreenSpace>& frame, const Rect<ScreenSpace>& screen,
                                           const std::optional<Rect<ScreenSpace>>& reservedRect, MorvelEdge edge) {
    if (!reservedRect || !isFinite(frame) || overlap(frame, screen) == 0) return std::nullopt;
    Rect<ScreenSpace> clear = frame;
    if (edge == MorvelEdge::Bottom) {
        clear.y = std::max(frame.minY(), reservedRect->maxY());
        clear.height = frame.height - (clear.y - frame.y);
    } else {
        clear.height = std::min(frame.maxY(), reservedRect->minY()) - frame.minY();
    }
    const bool reachesStrip = clear.height < frame.height;
    return reachesStrip && clear.height > 0 ? std::optional(clear) : std::nullopt;
}

std::optional<Rect<AXSpace>> restoreTarget(const Rect<AXSpace>& currentFrame,
                                           const std::optional<Rect<AXSpace>>& originalFrame, bool previouslyClamped,
                                           double tolerance) {
    if (!previouslyClamped || !originalFrame) return std::nullopt;
    return framesApproxEqual(currentFrame, *originalFrame, tolerance) ? std::nullopt : originalFrame;
}

bool framesApproxEqual(const Rect<AXSpace>& a, const Rect<AXSpace>& b, double tolerance) {
    const auto isNear = [tolerance](double first, double second) { return std::abs(first - second) <= tolerance; };
    return isNear(a.minX(), b.minX()) && isNear(a.minY(), b.minY()) && isNear(a.width, b.width) &&
           isNear(a.height, b.height);
}

const Screen* screenOf(const Rect<ScreenSpace>& window, const std::vector<Screen>& screens) {
    const auto most =
        std::ranges::max_element(screens, {}, [&](const Screen& screen) { return overlap(window, screen.frame); });
    return most != screens.end() && overlap(window, most->frame) > 0 ? &*most : nullptr;
}

}  // namespace morvel::ClampingMath
