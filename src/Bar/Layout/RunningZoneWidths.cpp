#include "Bar/Layout/RunningZoneWidths.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace morvel::RunningZoneLayout {

std::optional<double> resolveWindowButtonWidth(WindowButtonWidthMode mode, double customWidth) {
    switch (mode) {
        case WindowButtonWidthMode::Fixed:
            return kFixedButtonWidth;
        case WindowButtonWidthMode::Free:
            return std::nullopt;
        case WindowButtonWidthMode::Custom:
            return customWidth;
    }
    return kFixedButtonWidth;
}

double projectedFlatRunningWidth(const std::vector<WindowSnapshot>& windows, const FlatWidthRule& rule) {
    if (windows.empty()) return 0;
    const auto resolved = resolveWindowButtonWidth(rule.mode, rule.customWidth);
    double total = 0;
    for (const WindowSnapshot& window : windows) {
        if (resolved) {
            total += *resolved;
            continue;
        }
        const double text = rule.measure(window.title.empty() ? window.appName : window.title);
        total += std::clamp(std::ceil(text) + kTitleChrome, kMinProjectedFreeWidth, kMaxProjectedFreeWidth);
    }
    return total + rule.spacing * static_cast<double>(windows.size() - 1);
}

double availableRunningWidth(const RunningZoneRoom& room) {
    double width = room.baseWidth;
    if (room.edge == MorvelEdge::Top && room.compactAtTop) {
        width -= room.leftReserve + room.rightReserve;
        if (room.notch) width -= std::max(0.0, room.notch->end - room.notch->start);
    }
    width -= room.pinnedWidth + room.systemWidth + 2 * room.spacing;
    return std::max(width, kMinAvailableWidth);
}

double wastedBeforeNotch(double before, std::optional<double> buttonWidth, double spacing) {
    if (before <= 0) return 0;
    if (!buttonWidth) return std::min(before, kMaxFreeButtonWidth);
    const double step = *buttonWidth + spacing;
    return step > 0 ? before - step * std::floor((before + spacing) / step) : 0;  // the notch stands for a spacing
}

double flatPerButton(double projectedWindowed, double projectedWindowless, double gap, size_t windowedCount) {
    if (windowedCount == 0) return 0;
    return (projectedWindowed + projectedWindowless + gap) / static_cast<double>(windowedCount);
}

RunningZonePlan planRunningZone(std::vector<WindowSnapshot> windows, const FlatWidthRule& rule, double availableWidth,
                                Mode mode, WindowlessDisplayMode windowlessDisplayMode) {
    RunningZonePlan plan;
    std::vector<WindowSnapshot> windowed;
    windowed.reserve(windows.size());
    for (WindowSnapshot& window : windows)
        (window.isWindowless ? plan.windowless : windowed).push_back(std::move(window));

    plan.projectedWindowed = projectedFlatRunningWidth(windowed, rule);
    plan.projectedWindowless = projectedFlatRunningWidth(plan.windowless, rule);
    const double gap = windowed.empty() || plan.windowless.empty() ? 0 : rule.spacing;
    plan.flatPerButton =
        RunningZoneLayout::flatPerButton(plan.projectedWindowed, plan.projectedWindowless, gap, windowed.size());

    plan.decision = decide(std::move(windowed), availableWidth, plan.flatPerButton, mode);
    plan.windowlessIconOnly =
        windowlessIconOnly(windowlessDisplayMode, plan.decision, static_cast<int>(plan.windowless.size()),
                           availableWidth, plan.flatPerButton);
    return plan;
}

}  // namespace morvel::RunningZoneLayout
