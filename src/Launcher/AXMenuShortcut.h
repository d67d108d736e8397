// Chooses an item of another application's menu bar by the key that stands beside it.
#pragma once

#include <string_view>

#include "Platform/Accessibility.h"

namespace morvel::AXMenuShortcut {

/// Presses the first item, depth first, whose shortcut is Command alone with the character and whose title contains the
/// text, both without regard to case. True when one was found and took the press. Synchronous; a process that does not
/// answer costs one time-out.
bool press(Accessibility& accessibility, ProcessID pid, std::string_view character,
           std::string_view requireTitleContains);

}  // namespace morvel::AXMenuShortcut
