// Application icons for every button, each loaded and drawn once.
#pragma once

#include <functional>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "Platform/Icons.h"
#include "Platform/MainLoop.h"

namespace morvel {

/// Main thread only.
class IconCache {
public:
    /// Both outlive the cache.
    IconCache(Icons& icons, MainLoop& mainLoop);

    using Delivery = std::function<void(const ui::ImageRef&)>;

    /// Hands over the application's icon: at once when it is in the cache, else in a later turn of the loop, never
    /// null. The delivery ends with the token. Two requests for one icon that is still loading load it once.
    [[nodiscard]] Subscription icon(const std::optional<std::string>& bundleID, ProcessID fallbackPID,
                                    Delivery deliver);

private:
    Icons& icons_;
    MainLoop& mainLoop_;
};

}  // namespace morvel
