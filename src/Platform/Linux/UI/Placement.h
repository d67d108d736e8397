// Where menus, popovers and tooltips appear: decided from rectangles alone.
#pragma once

#include <optional>
#include <vector>

#include "Platform/Linux/Screens/RootGeometry.h"
#include "UI/Edge.h"

namespace morvel::x11 {

/// The monitor under the point, else the nearest one; nothing known: the point itself.
Rect<RootSpace> monitorAt(Point<RootSpace> point, const std::vector<Rect<RootSpace>>& monitors);

/// A menu at a point: below and to the right of it where that fits on the monitor, else above or to the left. A bar
/// under the point is left free: the menu stands on it, or hangs from it. The size is bounded to the monitor.
Rect<RootSpace> placeMenu(Point<RootSpace> at, Size size, const Rect<RootSpace>& monitor,
                          const std::optional<Rect<RootSpace>>& bar);

/// A submenu beside the item that opens it: on the right where that fits, else on the left, its first item level with
/// the opening one (`firstItemTop` is how far it lies below the submenu's top), moved up as far as the monitor demands.
Rect<RootSpace> placeSubmenu(const Rect<RootSpace>& item, Size size, double firstItemTop,
                             const Rect<RootSpace>& monitor);

struct PopoverPlace {
    Rect<RootSpace> window;  ///< body and arrow
    ui::Edge arrowSide = ui::Edge::Bottom;
    double arrowTipX = 0;  ///< from the window's left edge
};

/// A popover of this size, arrow included, on the anchor's `edge` side, or on the other one where there is more room
/// and not enough on the wanted one. Centred on the anchor, but kept on the monitor; the arrow stays at the anchor's
/// centre as far as the body's corners let it.
PopoverPlace placePopover(const Rect<RootSpace>& anchor, ui::Edge edge, Size size, const Rect<RootSpace>& monitor);

/// A tooltip above `avoid` (the bar, or the view it is for) where that fits, else below it; near `pointerX`.
Rect<RootSpace> placeTooltip(double pointerX, const Rect<RootSpace>& avoid, Size size, const Rect<RootSpace>& monitor);

}  // namespace morvel::x11
