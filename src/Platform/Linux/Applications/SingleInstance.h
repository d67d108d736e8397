// One bar for each X display: a further one wakes the first and leaves.
#pragma once

#include <functional>

#include "Platform/Linux/System/XConnection.h"

namespace morvel::x11 {

/// Owns a selection of the display, which ends with the process whatever way that goes. Main thread only.
class SingleInstance {
public:
    /// `openedAgain` is called when a further instance was started and left. The connection outlives this.
    SingleInstance(XConnection& connection, std::function<void()> openedAgain);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Whether this is the only one. If not, the other one has been told. Waits for the server, so for start-up only.
    bool claim();

private:
    XConnection& connection_;
    const xcb_window_t window_;
    Subscription ownership_;
    Subscription messages_;
};

}  // namespace morvel::x11
