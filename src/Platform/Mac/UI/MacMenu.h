// Menus of plain data as AppKit's.
#pragma once

#include "Platform/Mac/apple/AppKit/NSMenu.h"
#include "UI/Menu.h"

namespace morvel::mac {

/// The menu keeps its actions; they may be called as long as it lives.
NSMenu makeMenu(const ui::Menu& menu);

}  // namespace morvel::mac
