// What all bars share: the stores they show, the services they ask, and what their buttons can do.
#pragma once

#include <functional>
#include <vector>

#include "Bar/Buttons/AppActions.h"
#include "Bar/Buttons/OtherScreen.h"
#include "Display/SpaceQuery.h"
#include "Launcher/InstalledApp.h"
#include "NowPlaying/NowPlayingStore.h"
#include "Pinned/PinnedAppsStore.h"
#include "Platform/Icons.h"
#include "Platform/InstalledApplications.h"
#include "Platform/MainLoop.h"
#include "Platform/Screens.h"
#include "Settings/SettingsStore.h"
#include "Theme/IconCache.h"
#include "UI/Menu.h"
#include "UI/Toolkit.h"
#include "Util/WindowIDMint.h"
#include "WindowSource/WindowStore.h"

namespace morvel {

/// What a bar does to the world, bound once by the composition root. Every call may come when the window, process or
/// display it names is gone, and then does nothing. An empty function means that the action does not exist here; its
/// menu item cannot be chosen.
struct BarActions {
    std::function<void(WindowID)> onActivate;
    std::function<void(ProcessID)> onActivateApp;  ///< always set
    std::function<void(WindowID)> onClickRunningWindow;
    std::function<void(WindowID)> onMinimizeWindow;
    std::function<void(WindowID)> onClose;
    std::function<void(ProcessID)> onPinApp;
    std::function<void(WindowID, DisplayID)> onMoveWindow;
    /// The display is that of the bar that was clicked.
    std::function<void(const PinnedItem&, DisplayID)> onClickPinnedItem;
    std::function<void(const PinnedItem&, DisplayID)> onLaunchNewPinnedInstance;
    std::function<void()> onAppleMenu;  ///< opens the menu of the application that owns the menu bar
    AppActions app;
    /// Hands over what the launcher lists, now or in a later turn.
    std::function<void(std::function<void(const std::vector<InstalledApp>&)>)> installedApps;
    std::function<void(const InstalledApp&)> onLaunchApp;
    /// The displays other than the given one, in the system's order.
    std::function<std::vector<OtherScreen>(DisplayID)> otherScreens;
    /// The menu of an empty area of a bar, made afresh each time.
    std::function<ui::Menu()> contextMenu;
};

/// All outlive the bars.
struct BarServices {
    ui::Toolkit& toolkit;
    MainLoop& mainLoop;
    Screens& screens;
    Icons& icons;
    SpaceQuery& spaceQuery;
    WindowStore& store;
    SettingsStore& settings;
    PinnedAppsStore& pinned;
    InstalledApplications& installedApplications;
    IconCache& iconCache;
    NowPlayingStore& nowPlaying;
    WindowIDMint& mint;
    const BarActions& actions;
};

}  // namespace morvel
