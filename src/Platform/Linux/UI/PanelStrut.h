// What a panel asks the window manager to keep clear of maximized windows.
#pragma once

#include <optional>
#include <vector>

#include "Platform/Linux/Screens/Monitor.h"
#include "UI/Edge.h"

namespace morvel::x11 {

/// Struts are told as a distance from the root window's edge, so one for a monitor that ends before the root window
/// does covers what lies between. Where that is part of another monitor there is no way to say it, and there is none.
std::optional<Strut> panelStrut(const Rect<RootSpace>& panel, ui::Edge edge, const Rect<RootSpace>& root,
                                const std::vector<Rect<RootSpace>>& monitors);

}  // namespace morvel::x11
