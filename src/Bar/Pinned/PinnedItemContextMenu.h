// The context menu of a pinned item, on the bar and in the overflow's rows, as plain data.
#pragma once

#include <functional>

#include "Pinned/PinnedItem.h"
#include "UI/Menu.h"

namespace morvel::PinnedItemContextMenu {

/// A menu can outlive what it was opened on, so the actions own all they need. "Launch New Instance" is there for
/// applications only.
ui::Menu make(const PinnedItem& item, std::function<void()> onUnpin, std::function<void()> onLaunchNew,
              std::function<void()> onShow);

}  // namespace morvel::PinnedItemContextMenu
