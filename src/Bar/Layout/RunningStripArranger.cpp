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
        return arrangeGrouped(std::move(grouped->groups), std::move(windowless));
    auto windows = std::move(std::get<RunningZoneLayout::Flat>(decision).windows);
    std::ranges::move(windowless, std::back_inserter(windows));
    return arrangeFlat(std::move(windows));
}

RunningStripContent RunningStripArranger::arrangeFlat(std::vector<WindowSnapshot> windows) {
    RunningStripContent content;
    content.buttons = inOrder(std::move(windows), Strip::Flat);
    slots_ = runningWindowOrder_;
    return content;
}

// The order itself stays as it is, so that the buttons come back to where they were.
RunningStripContent RunningStripArranger::arrangeGrouped(std::vector<RunningZoneLayout::Group> groups,
                                                         std::vector<WindowSnapshot> windowless) {
    std::vector<WindowSnapshot> windows;
    for (RunningZoneLayout::Group& group : groups) std::ranges::move(group.windows, std::back_inserter(windows));
    RunningStripContent content{true, RunningZoneLayout::groupByApp(inOrder(std::move(windows), Strip::Grouped)),
                                std::move(windowless)};
    slots_.clear();
    for (const RunningZoneLayout::Group& group : content.groups) slots_.push_back(group.windows.front().id);
    return content;
}

std::vector<WindowSnapshot> RunningStripArranger::inOrder(std::vector<WindowSnapshot> windows, Strip strip) {
    if (!isAsLastTime(windows, strip)) arrangeAnew(windows, strip);
    std::vector<WindowSnapshot> ordered;
    ordered.reserve(windows.size());
    for (const size_t place : arranged_->places) ordered.push_back(std::move(windows[place]));
    return ordered;
}

bool RunningStripArranger::isAsLastTime(const std::vector<WindowSnapshot>& windows, Strip strip) const {
    return arranged_ && arranged_->strip == strip &&
           std::ranges::equal(windows, arranged_->windows, [](const WindowSnapshot& window, const auto& former) {
               return window.id == former.first && window.pid == former.second;
           });
}

void RunningStripArranger::arrangeAnew(const std::vector<WindowSnapshot>& windows, Strip strip) {
    std::vector<WindowID> order = nextOrder(windows);
    arranged_ = Arranged{strip, {}, {}};
    std::unordered_map<WindowID, size_t> places;
    for (const WindowSnapshot& window : windows) {
        places.emplace(window.id, arranged_->windows.size());
        arranged_->windows.emplace_back(window.id, window.pid);
    }
    for (const WindowID& id : order) arranged_->places.push_back(places.at(id));
    if (strip == Strip::Grouped) return;
    runningWindowOrder_ = std::move(order);
    if (arrival_ && std::ranges::count(runningWindowOrder_, arrival_->id)) arrival_.reset();
    runningWindowPIDs_.clear();
    runningWindowPIDs_.insert(arranged_->windows.begin(), arranged_->windows.end());
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
    arranged_.reset();
    const size_t bounded = std::min(position, runningWindowOrder_.size());
    runningWindowOrder_.insert(runningWindowOrder_.begin() + static_cast<std::ptrdiff_t>(bounded), id);
}

void RunningStripArranger::expectArrival(const WindowID& id, size_t slot) {
    arranged_.reset();
    arrival_ = Arrival{id, slot < slots_.size() ? std::optional(slots_[slot]) : std::nullopt};
}

}  // namespace morvel
