#include "Bar/Layout/RunningZoneLayout.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace morvel::RunningZoneLayout {

namespace {

double usedWidth(const Result& decision, double flatPerButton) {
    if (const auto* flat = std::get_if<Flat>(&decision))
        return flatPerButton * static_cast<double>(flat->windows.size());
    return kGroupedButtonWidth * static_cast<double>(std::get<Grouped>(decision).groups.size());
}

bool precedes(const WindowSnapshot& a, const WindowSnapshot& b) {
    if (const int byName = a.appName.compare(b.appName)) return byName < 0;
    if (const int byTitle = a.title.compare(b.title)) return byTitle < 0;
    return a.id < b.id;
}

/// Lets a table of texts be searched without making a text.
struct TextHash {
    using is_transparent = void;
    size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
};

}  // namespace

bool isCompactTopExpanded(MorvelEdge edge, bool compactAtTop, bool isExpanded) {
    return isExpanded && edge == MorvelEdge::Top && compactAtTop;
}

Mode effectiveMode(Mode configured, bool compactTopExpanded) {
    return configured == Mode::Never && compactTopExpanded ? Mode::Auto : configured;
}

Result decide(std::vector<WindowSnapshot> windows, double availableWidth, double flatPerButton, Mode mode) {
    const bool fits = flatPerButton * static_cast<double>(windows.size()) <= availableWidth;
    const bool isFlat = mode == Mode::Never || (mode == Mode::Auto && fits);
    if (isFlat) return Flat{stableSorted(std::move(windows))};
    return Grouped{groupByApp(std::move(windows))};
}

bool windowlessIconOnly(WindowlessDisplayMode mode, const Result& windowedDecision, int windowlessCount,
                        double availableWidth, double flatPerButton) {
    switch (mode) {
        case WindowlessDisplayMode::FollowGrouping:
            return std::holds_alternative<Grouped>(windowedDecision);
        case WindowlessDisplayMode::Auto: {
            const double remaining = std::max(0.0, availableWidth - usedWidth(windowedDecision, flatPerButton));
            return remaining < flatPerButton * windowlessCount;
        }
        case WindowlessDisplayMode::Always:
            return true;
        case WindowlessDisplayMode::Never:
            return false;
    }
    return false;
}

std::vector<WindowSnapshot> stableSorted(std::vector<WindowSnapshot> windows) {
    if (std::ranges::is_sorted(windows, precedes)) return windows;  // as what a bar projects is
    // Sorting references and moving each record once is cheaper than moving records at every step of the sort.
    std::vector<WindowSnapshot*> order;
    order.reserve(windows.size());
    for (WindowSnapshot& window : windows) order.push_back(&window);
    std::ranges::sort(order, [](const WindowSnapshot* a, const WindowSnapshot* b) { return precedes(*a, *b); });
    std::vector<WindowSnapshot> sorted;
    sorted.reserve(windows.size());
    for (WindowSnapshot* window : order) sorted.push_back(std::move(*window));
    return sorted;
}

std::vector<WindowSnapshot> stableSorted(std::vector<const WindowSnapshot*> windows) {
    std::ranges::sort(windows, [](const WindowSnapshot* a, const WindowSnapshot* b) { return precedes(*a, *b); });
    std::vector<WindowSnapshot> sorted;
    sorted.reserve(windows.size());
    for (const WindowSnapshot* window : windows) sorted.push_back(*window);
    return sorted;
}

std::string groupKey(const WindowSnapshot& window) {
    return window.bundleID ? *window.bundleID : "appName:" + window.appName;
}

std::vector<Group> groupByApp(std::vector<WindowSnapshot> windows) {
    std::vector<Group> groups;
    std::unordered_map<std::string, size_t, TextHash, std::equal_to<>> indices;
    std::string madeKey;
    for (WindowSnapshot& window : windows) {
        if (!window.bundleID) madeKey = groupKey(window);
        const std::string_view key = window.bundleID ? *window.bundleID : madeKey;
        auto index = indices.find(key);
        if (index == indices.end()) {
            index = indices.emplace(key, groups.size()).first;
            groups.push_back({std::string(key), window.appName, {}});
        }
        groups[index->second].windows.push_back(std::move(window));
    }
    return groups;
}

}  // namespace morvel::RunningZoneLayout
