#include "Settings/UI/Bindings.h"
#include "Settings/UI/SettingsTabs.h"

namespace morvel::tabs {

namespace {

using namespace bindings;

ui::FormSection windowlessApps(SettingsStore& settings) {
    return {"Windowless Apps",
            {picker("Show in morvel", settings.windowlessAppsMode, {"Off", "Un-pinned only", "All running"},
                    "Some apps stay running with no window open (e.g. Mail after the last message window closes). When "
                    "enabled, those apps appear as dimmed buttons on the primary-display morvel's first desktop so you "
                    "can quit them without opening Activity Monitor."),
             picker("Display as", settings.windowlessDisplayMode,
                    {"Follow Default Grouping", "Auto (icon-only when crowded)", "Always icon-only",
                     "Never (icon + title)"},
                    "Icon-only renders each windowless app as a compact 36pt tile that matches grouped app buttons. "
                    "Follow Default Grouping flips automatically when the bar collapses to grouped mode.")}};
}

ui::FormSection spaces(SettingsStore& settings, const Features& features) {
    ui::FormSection section{
        "Spaces",
        {picker("Show windows from", settings.windowSpaceMode, {"All Spaces", "Current Space only"},
                "All Spaces shows every window on this display regardless of which macOS Space it lives on. Current "
                "Space only shows windows whose Space matches the active one — the bar refreshes when you switch "
                "Spaces.")}};
    if (features.switchesSpaces)
        section.controls.push_back(
            toggle("Disable automatic Space switching", settings.spacesPrefsChangedByUs,
                   "Turns off two macOS preferences that interfere with predictable Desktop swipes: “Automatically "
                   "rearrange Spaces based on most recent use” and “When switching to an application, switch to a "
                   "Space with open windows for the application”."));
    return section;
}

ui::FormSection topEdge(SettingsStore& settings) {
    return {"Top edge",
            {toggle("Compact mode at top", settings.compactAtTop,
                    "When the morvel is at the top edge, sit on the left side of the macOS menu bar so Control Center, "
                    "Wi-Fi, battery, and the clock stay visible. The Apple menu and app menus on the left are covered. "
                    "Has no effect at other positions."),
             toggle("Match macOS menu bar height", settings.matchMenuBarHeight,
                    "When compact mode is on, override the bar height to match the system menu bar. Disable to use the "
                    "height set in General."),
             toggle("Auto-detect macOS status items width", settings.autoDetectMacOSItemsWidth,
                    "Asks macOS (via Accessibility) for the leftmost status-item position and uses that to size the "
                    "right-side buffer. Turn off to set the buffer manually."),
             slider("Right-side reserved buffer", settings.compactTopRightBuffer, 100, 400,
                    "Manual fallback: horizontal space reserved on the right for macOS status items. Only used when "
                    "auto-detection is off or fails."),
             stepper("Items visible when collapsed", settings.compactTopCollapsedItemCount, 1, 10,
                     "How many of the rightmost macOS menu-bar items stay uncovered when the morvel is collapsed. "
                     "Default 2 (clock + Control Center). Increase to reveal more items."),
             toggle("Auto-reserve space for app menu titles", settings.autoDetectMacOSMenuWidth,
                    "Asks macOS (via Accessibility) for the rightmost menu-title position of the frontmost app and "
                    "reserves a left-side gap so the bar doesn't overlap File / Edit / View / etc. labels. The gap "
                    "updates when you switch apps.")}};
}

ui::FormSection dragHover(SettingsStore& settings) {
    return {"Drag and Drop",
            {picker("Trigger on", settings.dragHoverRaiseMode, {"Off", "File drags only", "Any drag"},
                    "While dragging a file (or anything, if set to \"Any drag\"), dwelling 600ms over a morvel button "
                    "raises that window so you can drop on the app's UI. The morvel's own running-button drags are "
                    "never affected.")}};
}

ui::FormSection nowPlaying(SettingsStore& settings, const Features& features) {
    return {"Now Playing",
            {toggle("Show Now Playing controls", settings.nowPlayingEnabled,
                    features.hasMenuBar
                        ? "Adds a small badge to the running button of Spotify or Apple Music when one of them is "
                          "playing. Hover the badged button to reveal play / pause / next controls. Uses AppleScript — "
                          "first hover prompts macOS for Automation permission."
                        : "Adds a small badge to the running button of a media player when it is playing. Hover the "
                          "badged button to reveal play / pause / next controls.")}};
}

}  // namespace

ui::FormTab behavior(const SettingsSources& sources) {
    SettingsStore& settings = sources.settings;
    const Features& features = sources.features;
    ui::FormTab tab{
        "behavior",
        "Behavior",
        {{"Pinned Items",
          {stepper("Maximum visible on bar", settings.pinnedMaxVisible, 0, 15,
                   "Items beyond this number collapse into an expand button at the end of the pinned strip. Set 0 to "
                   "hide every pinned item behind the expand button.")}},
         {"Windows",
          {toggle("Reserve space for morvel", settings.clampWindows,
                  "When enabled, windowed apps' frames are shrunk so they never overlap the morvel.")}},
         {"Grouping",
          {picker("Mode", settings.groupingMode, {"Auto (group when crowded)", "Always group", "Never group"})}},
         windowlessApps(settings),
         spaces(settings, features),
         {"Auto-hide",
          {toggle("Hide bar when cursor is away", settings.autoHide,
                  "When enabled, the bar slides off-screen and reveals when your cursor reaches the screen edge.")}}}};
    if (features.hasMenuBar) tab.sections.push_back(topEdge(settings));
    tab.sections.push_back(dragHover(settings));
    tab.sections.push_back(nowPlaying(settings, features));
    if (features.hasDock)
        tab.sections.push_back(
            {"Dock",
             {toggle("Hide macOS Dock", settings.dockChangedByUs,
                     "Shrinks the Dock to a 1pt strip and stretches autohide-delay so it stays out of the way during "
                     "normal use, Mission Control, and Spaces switching. Toggle off to restore default Dock "
                     "settings.")}});
    return tab;
}

}  // namespace morvel::tabs
