#include "Bar/Layout/WindowProjection.h"

#include <algorithm>
#include <unordered_set>

#include "Bar/Layout/RunningZoneLayout.h"

namespace morvel {

namespace {

class Projector {
public:
    Projector(const WindowMap& windows, const ProjectionContext& context, SpaceQueryCache& spaces,
              const Rect<ScreenSpace>& screenFrame)
        : windows_(windows), context_(context), spaces_(spaces), screenFrame_(screenFrame) {}

    bool shows(const WindowSnapshot& window) {
        if (window.isWindowless) return windowlessShouldRender(window);
        if (window.bundleID && context_.windowBlacklist.contains(*window.bundleID)) return false;
        const bool currentSpaceOnly = context_.windowSpaceMode == WindowSpaceMode::CurrentSpace;
        if (currentSpaceOnly && window.isFullscreen) return false;
        // The window's frame has its origin at the top left and the screen's at the bottom left. Taken as they are,
        // they agree on displays beside each other, which is what this comparison is relied on for.
        if (!screenFrame_.contains(reinterpretUnconverted<ScreenSpace>(window.frame.center()))) return false;
        if (!currentSpaceOnly || !window.cgWindowID || !context_.spaceID) return true;
        return spaces_.spaces(*window.cgWindowID).contains(*context_.spaceID);
    }

private:
    bool windowlessShouldRender(const WindowSnapshot& placeholder) {
        if (context_.windowlessAppsMode == WindowlessAppsMode::Off) return false;
        if (context_.screenID != context_.mainDisplay) return false;
        const auto firstSpace = spaces_.firstUserSpaceID(context_.screenID);
        if (!firstSpace || firstSpace != context_.spaceID) return false;
        if (hasRealWindow(placeholder.pid)) return false;
        if (context_.windowlessAppsMode == WindowlessAppsMode::AllRunning) return true;
        return !placeholder.bundleID || !context_.pinnedBundleIDs.contains(*placeholder.bundleID);
    }

    bool hasRealWindow(ProcessID pid) {
        if (!pidsWithWindows_) {
            pidsWithWindows_.emplace();
            for (const auto& [id, window] : windows_)
                if (!window.isWindowless) pidsWithWindows_->insert(window.pid);
        }
        return pidsWithWindows_->contains(pid);
    }

    const WindowMap& windows_;
    const ProjectionContext& context_;
    SpaceQueryCache& spaces_;
    const Rect<ScreenSpace>& screenFrame_;
    std::optional<std::unordered_set<ProcessID>> pidsWithWindows_;  // gathered when the first placeholder asks
};

/// Whether the value had to be changed.
template <class T>
bool assign(T& to, const T& from) {
    if (to == from) return false;
    to = from;
    return true;
}

}  // namespace

std::vector<WindowSnapshot> windowsOnThisScreen(const WindowMap& windows, const ProjectionContext& context,
                                                SpaceQueryCache& spaces) {
    const auto screen = std::ranges::find(context.screens, std::optional(context.screenID), &Screen::displayID);
    if (screen == context.screens.end()) return {};
    Projector projector(windows, context, spaces, screen->frame);
    std::vector<const WindowSnapshot*> shown;
    shown.reserve(windows.size());
    for (const auto& [id, window] : windows)
        if (projector.shows(window)) shown.push_back(&window);
    return RunningZoneLayout::stableSorted(std::move(shown));
}

bool RunningProjection::Entry::update(const WindowSnapshot& window) {
    bool isChanged = assign(id, window.id);
    isChanged |= assign(pid, window.pid);
    isChanged |= assign(bundleID, window.bundleID);
    isChanged |= assign(title, window.title);
    isChanged |= assign(frame, window.frame);
    isChanged |= assign(isFullscreen, window.isFullscreen);
    isChanged |= assign(isWindowless, window.isWindowless);
    return isChanged;
}

bool RunningProjection::update(const std::vector<WindowSnapshot>& filtered, const ProjectionContext& context,
                               GroupingMode mode) {
    bool isChanged = assign(spaceID, context.spaceID);
    isChanged |= assign(groupingMode, mode);
    isChanged |= assign(windowSpaceMode, context.windowSpaceMode);
    isChanged |= assign(windowlessAppsMode, context.windowlessAppsMode);
    isChanged |= entries.size() != filtered.size();
    entries.resize(filtered.size());
    for (size_t i = 0; i < filtered.size(); ++i) isChanged |= entries[i].update(filtered[i]);
    return isChanged;
}

}  // namespace morvel
