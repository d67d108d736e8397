// Which of all tracked windows one display's bar shows, and whether that differs from what it showed before.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Bar/Layout/SpaceQueryCache.h"
#include "Platform/Screens.h"
#include "Settings/SettingsEnums.h"
#include "WindowSource/WindowStore.h"

namespace morvel {

/// What besides the windows decides a bar's projection.
struct ProjectionContext {
    std::vector<Screen> screens;
    DisplayID mainDisplay;
    DisplayID screenID;              ///< the bar's display
    std::optional<SpaceID> spaceID;  ///< the Space the bar shows; absent where Spaces cannot be told: none are tested
    WindowSpaceMode windowSpaceMode = WindowSpaceMode::CurrentSpace;
    WindowlessAppsMode windowlessAppsMode = WindowlessAppsMode::Off;
    std::set<std::string> windowBlacklist;
    std::set<std::string> pinnedBundleIDs;  ///< of pinned applications
};

/// The records this bar shows, in a fixed order (see RunningZoneLayout::stableSorted): the map has none, and an order
/// that came and went would make groups jump.
std::vector<WindowSnapshot> windowsOnThisScreen(const WindowMap& windows, const ProjectionContext& context,
                                                SpaceQueryCache& spaces);

/// The value whose change makes the running strip be rebuilt.
struct RunningProjection {
    /// What of a record the strip shows; the whole of it counts, unlike in the record's own equality.
    struct Entry {
        WindowID id;
        ProcessID pid;
        std::optional<std::string> bundleID;
        std::string title;
        Rect<AXSpace> frame;
        bool isFullscreen = false;
        bool isWindowless = false;
        bool update(const WindowSnapshot& window);
    };

    std::vector<Entry> entries;
    std::optional<SpaceID> spaceID;
    GroupingMode groupingMode = GroupingMode::Auto;
    WindowSpaceMode windowSpaceMode = WindowSpaceMode::CurrentSpace;
    WindowlessAppsMode windowlessAppsMode = WindowlessAppsMode::Off;

    /// Makes this the projection of `filtered`; whether that changes it. Texts that stay are left where they are, so
    /// that one changed title among hundreds costs comparisons and not copies.
    bool update(const std::vector<WindowSnapshot>& filtered, const ProjectionContext& context, GroupingMode mode);
};

}  // namespace morvel
