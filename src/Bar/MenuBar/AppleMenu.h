// The Apple menu of the application that owns the menu bar.
#pragma once

#include "Platform/Accessibility.h"

namespace morvel {

/// Opens it where the system shows it, as a click on it does. Does nothing for an application without menus, or one
/// that hangs.
void openAppleMenu(Accessibility& accessibility, ProcessID owner);

}  // namespace morvel
