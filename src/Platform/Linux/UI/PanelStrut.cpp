#include "Platform/Linux/UI/PanelStrut.h"

#include <algorithm>

namespace morvel::x11 {

std::optional<Strut> panelStrut(const Rect<RootSpace>& panel, ui::Edge edge, const Rect<RootSpace>& root,
                                const std::vector<Rect<RootSpace>>& monitors) {
    const double start = std::max(panel.minX(), root.minX()), end = std::min(panel.maxX(), root.maxX());
    const bool isBottom = edge == ui::Edge::Bottom;
    const double thickness = isBottom ? root.maxY() - panel.minY() : panel.maxY() - root.minY();
    if (start >= end || thickness <= 0) return std::nullopt;

    const bool coversAnother = std::ranges::any_of(monitors, [&](const Rect<RootSpace>& monitor) {
        const bool isBeyond = isBottom ? monitor.maxY() > panel.maxY() : monitor.minY() < panel.minY();
        return isBeyond && monitor.minX() < end && start < monitor.maxX();
    });
    if (coversAnother) return std::nullopt;

    Strut strut;
    (isBottom ? strut.bottom : strut.top) = thickness;
    (isBottom ? strut.bottomStart : strut.topStart) = start - root.minX();
    (isBottom ? strut.bottomEnd : strut.topEnd) = end - root.minX() - 1;  // the last pixel covered
    return strut;
}

}  // namespace morvel::x11
