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
    runningWindowOrder_ = RunningWindowOrder::sync(runningWindowOrder_, runningWindowPIDs_, windows);
    runningWindowPIDs_.clear();
    std::unordered_map<WindowID, WindowSnapshot*> byID;
    for (WindowSnapshot& window : windows) {
        runningWindowPIDs_.emplace(window.id, window.pid);
        byID.emplace(window.id, &window);
    }
    RunningStripContent content;
    content.buttons.reserve(windows.size());
    for (const WindowID& id : runningWindowOrder_) content.buttons.push_back(std::move(*byID.at(id)));
    return content;
}

}  // namespace morvel
