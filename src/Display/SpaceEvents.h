// The window server's prompt signal that a current Space may have changed.
#pragma once

#include <cstdint>
#include <functional>

#include "Platform/WindowServer.h"
#include "Util/Subscription.h"

namespace morvel {

/// Main thread only. One handler; the notice comes before the workspace's own, and where the server offers none only
/// that one comes.
class SpaceEvents {
public:
    using Handler = std::function<void(uint32_t event)>;

    /// The server outlives this.
    explicit SpaceEvents(WindowServer& server) : server_(server) {}
    SpaceEvents(const SpaceEvents&) = delete;
    SpaceEvents& operator=(const SpaceEvents&) = delete;

    /// Replaces the handler. The first call registers with the server, later ones do not again.
    void start(Handler handler);

private:
    WindowServer& server_;
    Handler handler_;
    bool registered_ = false;
    Subscription registration_;
};

}  // namespace morvel
