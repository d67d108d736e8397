// How the parts of a bar keep it from hiding.
#pragma once

#include <functional>

namespace morvel {

/// Keeps an auto-hidden bar shown while a menu or popover of it is open or one of its buttons is dragged, and releases
/// it. Called in pairs; both are set and may be called when the bar is gone.
struct BarReveal {
    std::function<void()> pinReveal = [] {};
    std::function<void()> unpinReveal = [] {};

    /// Pins now; the answer, called once, releases.
    std::function<void()> hold() const {
        pinReveal();
        return unpinReveal;
    }
};

}  // namespace morvel
