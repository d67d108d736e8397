// The window server's own notice of Space changes, which comes before the workspace's.
#pragma once

#include "Platform/Mac/Windows/SpaceFunctions.h"
#include "Util/Signal.h"

namespace morvel::mac {

/// Main thread only; one lives at a time. Asks the server at the first subscription, once: there is no way to take that
/// back.
class SpaceEvents {
public:
    /// The functions outlive this.
    explicit SpaceEvents(SpaceFunctions& functions) : functions_(functions) {}
    ~SpaceEvents();
    SpaceEvents(const SpaceEvents&) = delete;
    SpaceEvents& operator=(const SpaceEvents&) = delete;

    /// An empty token where the server has no such notice.
    [[nodiscard]] Subscription observe(std::function<void(std::uint32_t event)> changed);

private:
    bool ensureRegistered();
    static void received(std::uint32_t event, void* data, std::size_t length, void* context);
    static void deliver(void* event);

    SpaceFunctions& functions_;
    Signal<std::uint32_t> events_;
    bool isRegistered_ = false;
};

}  // namespace morvel::mac
