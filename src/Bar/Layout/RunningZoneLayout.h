// Decides how a bar's running zone shows its windows: one button each or one per application, and how wide.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "Settings/SettingsEnums.h"
#include "WindowSource/WindowSnapshot.h"

namespace morvel::RunningZoneLayout {

using Mode = GroupingMode;

inline constexpr double kFixedButtonWidth = 150;
inline constexpr double kGroupedButtonWidth = 40;
inline constexpr double kIconOnlyWidth = 36;
inline constexpr double kTitleChrome = 38;          ///< what a button adds to its title's width
inline constexpr double kMaxFreeButtonWidth = 220;  ///< of a button whose title decides its width
inline constexpr double kMinAvailableWidth = 120;

struct Group {
    std::string bundleID;  ///< the group's key: a bundle identifier, or "appName:" and the application's name
    std::string appName;
    std::vector<WindowSnapshot> windows;
    bool operator==(const Group&) const = default;
};

struct Flat {
    std::vector<WindowSnapshot> windows;
    bool operator==(const Flat&) const = default;
};
struct Grouped {
    std::vector<Group> groups;
    bool operator==(const Grouped&) const = default;
};
using Result = std::variant<Flat, Grouped>;

/// Whether the expanded state of the compact top bar counts: at the top edge and with that mode on.
bool isCompactTopExpanded(MorvelEdge edge, bool compactAtTop, bool isExpanded);

/// `never` becomes `auto` while the compact top bar is expanded, because the expanded bar may not run over its end.
Mode effectiveMode(Mode configured, bool compactTopExpanded);

/// The grouping of `windows` (none of them windowless) in `availableWidth` points, when a flat button takes
/// `flatPerButton` points on average.
Result decide(std::vector<WindowSnapshot> windows, double availableWidth, double flatPerButton, Mode mode);

/// Whether windowless applications are drawn as icons alone.
bool windowlessIconOnly(WindowlessDisplayMode mode, const Result& windowedDecision, int windowlessCount,
                        double availableWidth, double flatPerButton);

/// By application name, then title, then id: plain comparisons, so that no order of tracking shows through.
std::vector<WindowSnapshot> stableSorted(std::vector<WindowSnapshot> windows);
/// The same of records that somebody else keeps; each is copied once, to its place.
std::vector<WindowSnapshot> stableSorted(std::vector<const WindowSnapshot*> windows);

/// The key under which an application's windows are grouped.
std::string groupKey(const WindowSnapshot& window);

/// One group per application in order of first occurrence; windows keep their order.
std::vector<Group> groupByApp(std::vector<WindowSnapshot> windows);

}  // namespace morvel::RunningZoneLayout
