#include "Platform/Linux/UI/Placement.h"

#include <algorithm>
#include <cmath>

#include "Platform/Linux/UI/Bubble.h"

namespace morvel::x11 {

namespace {

constexpr double kScreenMargin = 4;  // popovers and tooltips do not stick to the edge
constexpr double kTooltipGap = 6;
constexpr double kSubmenuOverlap = 3;
constexpr double kArrowCorner = 8 + kArrowWidth / 2;  // nearest that an arrow's tip comes to the body's side

// Like std::clamp, but where there is no room at all the lower bound counts.
double keepWithin(double value, double low, double high) {
    return std::max(low, std::min(value, high));
}

double distance(Point<RootSpace> p, const Rect<RootSpace>& r) {
    const double dx = std::max({r.minX() - p.x, 0.0, p.x - r.maxX()});
    const double dy = std::max({r.minY() - p.y, 0.0, p.y - r.maxY()});
    return std::hypot(dx, dy);
}

}  // namespace

Rect<RootSpace> monitorAt(Point<RootSpace> point, const std::vector<Rect<RootSpace>>& monitors) {
    const auto contains = std::ranges::find_if(monitors, [&](const auto& m) { return m.contains(point); });
    if (contains != monitors.end()) return *contains;
    const auto nearest =
        std::ranges::min_element(monitors, {}, [&](const auto& monitor) { return distance(point, monitor); });
    return nearest == monitors.end() ? Rect<RootSpace>{point.x, point.y, 0, 0} : *nearest;
}

Rect<RootSpace> placeMenu(Point<RootSpace> at, Size size, const Rect<RootSpace>& monitor,
                          const std::optional<Rect<RootSpace>>& bar) {
    const double width = std::min(size.width, monitor.width), height = std::min(size.height, monitor.height);
    const double x = at.x + width <= monitor.maxX() ? at.x : at.x - width;
    double y = at.y + height <= monitor.maxY() ? at.y : at.y - height;
    if (bar) y = bar->midY() > monitor.midY() ? bar->minY() - height : bar->maxY();
    return {keepWithin(x, monitor.minX(), monitor.maxX() - width),
            keepWithin(y, monitor.minY(), monitor.maxY() - height), width, height};
}

Rect<RootSpace> placeSubmenu(const Rect<RootSpace>& item, Size size, double firstItemTop,
                             const Rect<RootSpace>& monitor) {
    const double width = std::min(size.width, monitor.width), height = std::min(size.height, monitor.height);
    const double right = item.maxX() - kSubmenuOverlap, left = item.minX() + kSubmenuOverlap - width;
    const double x = right + width <= monitor.maxX() || left < monitor.minX() ? right : left;
    return {keepWithin(x, monitor.minX(), monitor.maxX() - width),
            keepWithin(item.minY() - firstItemTop, monitor.minY(), monitor.maxY() - height), width, height};
}

PopoverPlace placePopover(const Rect<RootSpace>& anchor, ui::Edge edge, Size size, const Rect<RootSpace>& monitor) {
    const double roomAbove = anchor.minY() - monitor.minY() - kScreenMargin;
    const double roomBelow = monitor.maxY() - anchor.maxY() - kScreenMargin;
    const double wanted = edge == ui::Edge::Top ? roomAbove : roomBelow;
    const double other = edge == ui::Edge::Top ? roomBelow : roomAbove;
    const bool isAbove = (edge == ui::Edge::Top) == (size.height <= wanted || wanted >= other);

    const double height = std::max(1.0, std::min(size.height, isAbove ? roomAbove : roomBelow));
    const double width = std::min(size.width, monitor.width - 2 * kScreenMargin);
    const double x = std::round(
        keepWithin(anchor.midX() - width / 2, monitor.minX() + kScreenMargin, monitor.maxX() - kScreenMargin - width));
    const double y = isAbove ? anchor.minY() - height : anchor.maxY();
    const double tip = keepWithin(anchor.midX() - x, kArrowCorner, width - kArrowCorner);
    return {{x, y, width, height}, isAbove ? ui::Edge::Bottom : ui::Edge::Top, tip};
}

Rect<RootSpace> placeTooltip(double pointerX, const Rect<RootSpace>& avoid, Size size, const Rect<RootSpace>& monitor) {
    const double above = avoid.minY() - kTooltipGap - size.height;
    const double y = above >= monitor.minY() ? above : avoid.maxY() + kTooltipGap;
    const double x = keepWithin(pointerX - size.width / 2, monitor.minX() + kScreenMargin,
                                monitor.maxX() - kScreenMargin - size.width);
    return {std::round(x), std::round(keepWithin(y, monitor.minY(), monitor.maxY() - size.height)), size.width,
            size.height};
}

}  // namespace morvel::x11
