#include "Bar/Layout/RunningStripArranger.h"

#include <algorithm>
#include <iterator>
#include <tuple>

#include "Bar/Layout/RunningWindowOrder.h"

namespace morvel {

RunningStripContent RunningStripArranger::arrange(RunningZoneLayout::Result decision,
                                                  std::vector<WindowSnapshot> windowless) {
    std::ranges::sort(windowless, [](const WindowSnapshot& a, const WindowSnapshot& b) {
        return std::tie(a.appName, a.id) < std::tie(b.appName, b.id);
    });
    if (auto* grouped = std::get_if<RunningZoneLayout::Grouped>(&decision))
        return {true, std::move(grouped->groups), std::move(windowless)};
    auto windows = std::move(std::get<RunningZoneLayout::Flat>(decision).windows);
    std::ranges::move(windowless, std::back_inserter(windows));
    return arrangeFlat(std::move(windows));
}

RunningStripContent RunningStripArranger::arrangeFlat(std::vector<WindowSnapshot> windows) {
    // Most changes are of titles and frames; while no window comes or goes, each keeps its place.
    if (!areInOrder(windows)) updateOrder(windows);
    RunningStripContent content;
    content.buttons.resize(runningWindowOrder_.size());
    for (WindowSnapshot& window : windows) content.buttons[places_.at(window.id)] = std::move(window);
    return content;
}

bool RunningStripArranger::areInOrder(const std::vector<WindowSnapshot>& windows) const {
    return windows.size() == places_.size() &&
           std::ranges::all_of(windows, [this](const WindowSnapshot& window) { return places_.contains(window.id); });
}

void RunningStripArranger::updateOrder(const std::vector<WindowSnapshot>& windows) {
    runningWindowOrder_ = RunningWindowOrder::sync(runningWindowOrder_, runningWindowPIDs_, windows);
    runningWindowPIDs_.clear();
    for (const WindowSnapshot& window : windows) runningWindowPIDs_.emplace(window.id, window.pid);
    places_.clear();
    for (const WindowID& id : runningWindowOrder_) places_.emplace(id, places_.size());
}

}  // namespace morvel
