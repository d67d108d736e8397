// Every user setting and the few flags that the program keeps for itself, each published and written through.
#pragma once

#include <set>
#include <string>

#include "Settings/Setting.h"
#include "Settings/SettingsEnums.h"

namespace morvel {

/// Main thread only. Reads the defaults once, in the order below; what another process writes later is not seen.
/// Nothing fails: a missing, mistyped or unknown value reads as the default, a number out of range as the nearest
/// allowed one.
class SettingsStore {
public:
    /// `defaults` outlives the store.
    explicit SettingsStore(UserDefaults& defaults);

    Setting<MorvelEdge> barEdge;
    Setting<double> barHeight;  ///< points, 24…64
    Setting<Theme> theme;
    Setting<bool> clampWindows;
    Setting<GroupingMode> groupingMode;
    Setting<bool> startAtLogin;
    Setting<bool> showStartButton;
    Setting<bool> showAppleMenuButton;
    Setting<bool> autoHide;
    Setting<bool> compactAtTop;
    Setting<bool> matchMenuBarHeight;
    Setting<double> compactTopRightBuffer;  ///< points, 100…400
    Setting<bool> autoDetectMacOSItemsWidth;
    Setting<int> compactTopCollapsedItemCount;  ///< 1…10
    Setting<bool> autoDetectMacOSMenuWidth;
    Setting<bool> nowPlayingEnabled;
    Setting<bool> firstRunCompleted;
    Setting<bool> dockChangedByUs;
    Setting<bool> spacesPrefsChangedByUs;
    Setting<bool> spacesPrefsAsked;
    Setting<std::set<std::string>> windowBlacklist;  ///< bundle identifiers whose windows the bar does not list
    Setting<bool> showButtonBorders;
    Setting<bool> showMenuBarIcon;
    Setting<WindowButtonWidthMode> windowButtonWidthMode;
    Setting<double> windowButtonCustomWidth;  ///< points, 60…320
    Setting<WindowSpaceMode> windowSpaceMode;
    Setting<WindowlessAppsMode> windowlessAppsMode;
    Setting<WindowlessDisplayMode> windowlessDisplayMode;
    Setting<DragHoverRaiseMode> dragHoverRaiseMode;
    Setting<ActiveButtonStyle> activeButtonStyle;
    Setting<AccentColorMode> accentColorMode;
    Setting<std::string> accentColorCustom;  ///< RRGGBBAA in hexadecimal, not validated here
    Setting<BarBackgroundStyle> barBackgroundStyle;
    Setting<BarBlurIntensity> barBlurIntensity;
    Setting<int> pinnedMaxVisible;  ///< 0…15
    Setting<bool> updaterAutoCheckEnabled;
    Setting<std::optional<Date>> updaterLastCheckedAt;
    Setting<std::optional<std::string>> updaterSkippedVersion;
    Setting<std::optional<Data>> updaterCachedRemote;

    /// Calls `visit` with each setting that is a person's choice, in the order above; not with what the program keeps
    /// for itself, nor with what stands for a change to the system.
    template <class Visit>
    void forEachChoice(const Visit& visit) {
        visit(barEdge), visit(barHeight), visit(theme), visit(clampWindows), visit(groupingMode), visit(startAtLogin);
        visit(showStartButton), visit(showAppleMenuButton), visit(autoHide), visit(compactAtTop);
        visit(matchMenuBarHeight), visit(compactTopRightBuffer), visit(autoDetectMacOSItemsWidth);
        visit(compactTopCollapsedItemCount), visit(autoDetectMacOSMenuWidth), visit(nowPlayingEnabled);
        visit(windowBlacklist), visit(showButtonBorders), visit(showMenuBarIcon), visit(windowButtonWidthMode);
        visit(windowButtonCustomWidth), visit(windowSpaceMode), visit(windowlessAppsMode);
        visit(windowlessDisplayMode), visit(dragHoverRaiseMode), visit(activeButtonStyle), visit(accentColorMode);
        visit(accentColorCustom), visit(barBackgroundStyle), visit(barBlurIntensity), visit(pinnedMaxVisible);
        visit(updaterAutoCheckEnabled);
    }
};

}  // namespace morvel
