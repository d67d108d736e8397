#include "Bar/Layout/RunningStripArranger.h"

#include <algorithm>
#include <iterator>
#include <tuple>

#include "Bar/Layout/RunningWindowOrder.h"

namespace morvel {

namespace {

/// `order` holds the id of each of the windows, once.
std::vector<WindowSnapshot> inOrder(std::vector<WindowSnapshot> windows, const std::vector<WindowID>& order) {
    std::unordered_map<WindowID, WindowSnapshot*> byID;
    for (WindowSnapshot& window : windows) byID.emplace(window.id, &window);
    std::vector<WindowSnapshot> ordered;
    ordered.reserve(order.size());
    for (const WindowID& id : order) ordered.push_back(std::move(*byID.at(id)));
    return ordered;
}

}  // namespace

RunningStripContent RunningStripArranger::arrange(RunningZoneLayout::Result decision,
                                                  std::vector<WindowSnapshot> windowless) {
    std::ranges::sort(windowless, [](const WindowSnapshot& a, const WindowSnapshot& b) {
        return std::tie(a.appName, a.id) < std::tie(b.appName, b.id);
    });
    if (auto* grouped = std::get_if<RunningZoneLayout::Grouped>(&decision))
        return arrangeGrouped(std::move(grouped->groups), std::move(windowless));
    auto windows = std::move(std::get<RunningZoneLayout::Flat>(decision).windows);
    std::ranges::move(windowless, std::back_inserter(windows));
    return arrangeFlat(std::move(windows));
}

RunningStripContent RunningStripArranger::arrangeFlat(std::vector<WindowSnapshot> windows) {
    runningWindowOrder_ = nextOrder(windows);
    if (arrival_ && std::ranges::count(runningWindowOrder_, arrival_->id)) arrival_.reset();
    runningWindowPIDs_.clear();
    for (const WindowSnapshot& window : windows) runningWindowPIDs_.emplace(window.id, window.pid);
    RunningStripContent content;
    content.buttons = inOrder(std::move(windows), runningWindowOrder_);
    slots_ = runningWindowOrder_;
    return content;
}

// The order itself stays as it is, so that the buttons come back to where they were.
RunningStripContent RunningStripArranger::arrangeGrouped(std::vector<RunningZoneLayout::Group> groups,
                                                         std::vector<WindowSnapshot> windowless) {
    std::vector<WindowSnapshot> windows;
    for (RunningZoneLayout::Group& group : groups) std::ranges::move(group.windows, std::back_inserter(windows));
    const std::vector<WindowID> order = nextOrder(windows);
    RunningStripContent content{true, RunningZoneLayout::groupByApp(inOrder(std::move(windows), order)),
                                std::move(windowless)};
    slots_.clear();
    for (const RunningZoneLayout::Group& group : content.groups) slots_.push_back(group.windows.front().id);
    return content;
}

std::vector<WindowID> RunningStripArranger::nextOrder(const std::vector<WindowSnapshot>& windows) const {
    auto order = RunningWindowOrder::sync(runningWindowOrder_, runningWindowPIDs_, windows);
    if (!arrival_ || std::ranges::count(runningWindowOrder_, arrival_->id)) return order;
    if (std::erase(order, arrival_->id) == 0) return order;
    const auto before = arrival_->before ? std::ranges::find(order, *arrival_->before) : order.end();
    order.insert(before, arrival_->id);
    return order;
}

void RunningStripArranger::moveRunningWindow(const WindowID& id, size_t position) {
    if (std::erase(runningWindowOrder_, id) == 0) return;
    const size_t bounded = std::min(position, runningWindowOrder_.size());
    runningWindowOrder_.insert(runningWindowOrder_.begin() + static_cast<std::ptrdiff_t>(bounded), id);
}

void RunningStripArranger::expectArrival(const WindowID& id, size_t slot) {
    arrival_ = Arrival{id, slot < slots_.size() ? std::optional(slots_[slot]) : std::nullopt};
}

}  // namespace morvel
