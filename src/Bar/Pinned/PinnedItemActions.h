// What a view of a pinned item can do.
#pragma once

#include <functional>

#include "Bar/BarReveal.h"

namespace morvel {

/// One that is not set does nothing. Menus keep copies of all but the first, so those refer to no view.
struct PinnedItemActions {
    std::function<void()> onClick;
    std::function<void()> onUnpin;
    std::function<void()> onLaunchNewInstance;
    std::function<void()> onShow;  ///< in the file manager
    BarReveal reveal;
};

}  // namespace morvel
