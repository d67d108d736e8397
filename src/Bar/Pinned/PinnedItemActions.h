// What a view of a pinned item can do.
#pragma once

#include <functional>

namespace morvel {

/// One that is not set does nothing. Menus keep copies of all but the first, so those refer to no view.
struct PinnedItemActions {
    std::function<void()> onClick;
    std::function<void()> onUnpin;
    std::function<void()> onLaunchNewInstance;
    std::function<void()> onShow;  ///< in the file manager
    /// Called in pairs around a menu, to keep the bar shown meanwhile.
    std::function<void()> pinReveal;
    std::function<void()> unpinReveal;
};

}  // namespace morvel
