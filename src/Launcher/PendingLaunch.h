// A launch whose window has not come yet.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_set>

#include "Platform/MainLoop.h"
#include "Util/Identity.h"

namespace morvel {

/// Windows that were added to Spaces for a while, and to which.
using StickyAdditions = std::map<WindowNumber, std::set<SpaceID>>;

using WindowIDs = std::unordered_set<WindowID>;

struct PendingLaunch {
    std::string bundleID;                  ///< of the application whose window is awaited
    WindowIDs knownIDs;                    ///< windows that were there before, or were routed for an earlier launch
    DisplayID targetScreen;                ///< whose bar was clicked
    std::optional<SpaceID> activeSpaceID;  ///< of that display at the launch; absent when it could not be read
    StickyAdditions stickyAdditions;
    bool postRouteActivate = false;  ///< whether the application comes to the front with its window
    Instant deadline;
};

}  // namespace morvel
