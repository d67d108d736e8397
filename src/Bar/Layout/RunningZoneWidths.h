// How much room the running zone has and would need, in points, and the whole plan of what it shows in that room.
#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "Bar/Layout/RunningZoneLayout.h"
#include "Settings/SettingsEnums.h"
#include "WindowSource/WindowSnapshot.h"

namespace morvel::RunningZoneLayout {

/// A free button's projected bounds. The button's own are narrower: the projection allows for what may come.
inline constexpr double kMinProjectedFreeWidth = 60;
inline constexpr double kMaxProjectedFreeWidth = 320;

/// The width of a title as a button shows it.
using MeasureText = std::function<double(std::string_view)>;

/// The settings and the measure that decide a flat button's width.
struct FlatWidthRule {
    WindowButtonWidthMode mode = WindowButtonWidthMode::Fixed;
    double customWidth = 0;  ///< used by the mode Custom alone
    double spacing = 0;      ///< the running strip's, between neighbours
    MeasureText measure;     ///< called by the mode Free alone
};

/// Nothing: the button sizes itself.
std::optional<double> resolveWindowButtonWidth(WindowButtonWidthMode mode, double customWidth);

/// What the windows would take if each had a button of its own; 0 for none.
double projectedFlatRunningWidth(const std::vector<WindowSnapshot>& windows, const FlatWidthRule& rule);

/// The part of a display's width that its camera housing takes, from the display's left edge.
struct NotchRange {
    double start = 0;
    double end = 0;
    bool operator==(const NotchRange&) const = default;
};

/// What decides the room of the running zone.
struct RunningZoneRoom {
    double baseWidth = 0;  ///< of the bar's screen; of the bar itself when there is no such screen
    MorvelEdge edge = MorvelEdge::Bottom;
    bool compactAtTop = false;
    double leftReserve = 0;   ///< of the compact bar, for the front application's menus
    double rightReserve = 0;  ///< of the compact bar, for the system's items
    std::optional<NotchRange> notch;
    double pinnedWidth = 0;  ///< that the pinned strip fits in
    double systemWidth = 0;  ///< that the system strip fits in
    double spacing = 0;      ///< the running strip's
};

/// Never less than `kMinAvailableWidth`.
double availableRunningWidth(const RunningZoneRoom& room);

/// What stays empty before the notch because a button of the row would reach into it, where `before` points lie between
/// the zone's start and the notch. Buttons without a width of their own may be as wide as the widest free one.
double wastedBeforeNotch(double before, std::optional<double> buttonWidth, double spacing);

/// The room one flat button stands for: the windowless tiles' room is spread over the buttons of windows on purpose, so
/// that tiles crowd the zone too. 0 without windows.
double flatPerButton(double projectedWindowed, double projectedWindowless, double gap, size_t windowedCount);

struct RunningZonePlan {
    double projectedWindowed = 0;
    double projectedWindowless = 0;
    double flatPerButton = 0;
    Result decision;                         ///< of the real windows
    std::vector<WindowSnapshot> windowless;  ///< the placeholders, in the order given
    bool windowlessIconOnly = false;
};

/// The plan for `windows`, placeholders among them, already filtered for the bar. `mode` is the effective one.
RunningZonePlan planRunningZone(std::vector<WindowSnapshot> windows, const FlatWidthRule& rule, double availableWidth,
                                Mode mode, WindowlessDisplayMode windowlessDisplayMode);

}  // namespace morvel::RunningZoneLayout
