// Where the status items (clock, Control Center and other programs' icons) stand in a menu bar.
#pragma once

#include <optional>
#include <vector>

#include "Platform/Accessibility.h"
#include "Platform/Screens.h"
#include "Platform/WindowServer.h"

namespace morvel::MacOSMenuExtrasDetector {

/// The part of a screen's menu bar in which status items can stand: right of the camera housing, where there is one.
/// `firstScreenHeight` converts to the coordinates of accessibility.
Rect<AXSpace> statusArea(const Screen& screen, double firstScreenHeight);

/// The listed windows that are status items in the area, in the list's order. `ownProcess` is this program's: of its
/// windows the bars and their panels are at the same layer, and are none.
std::vector<ListedWindow> statusItems(const std::vector<ListedWindow>& windows, const Rect<AXSpace>& area,
                                      ProcessID ownProcess);

/// The left ends of the status items in the area by the window list, ascending.
std::vector<double> statusItemXsViaWindowList(const std::vector<ListedWindow>& windows, const Rect<AXSpace>& area,
                                              ProcessID ownProcess);

/// The frames of the process's status items on whichever display. Asks the process a bounded number of questions, and
/// no more after one that it did not answer in time; none for one that has no items or does not tell.
std::vector<Rect<AXSpace>> itemsOf(Accessibility& accessibility, ProcessID process);

/// The left ends of those of the items that stand in the area, ascending.
std::vector<double> probe(const std::vector<Rect<AXSpace>>& items, const Rect<AXSpace>& area);

/// The left end of the `rightmostCount` rightmost items, of which all are meant where there are fewer; nothing for
/// none.
std::optional<double> systemAreaLeftmostX(const std::vector<double>& ascendingXs, int rightmostCount);

}  // namespace morvel::MacOSMenuExtrasDetector
