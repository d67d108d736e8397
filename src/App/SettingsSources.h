// Binds the settings window to the stores and to the system.
#pragma once

#include "Clamping/ClampingBlacklist.h"
#include "Pinned/PinnedAppsStore.h"
#include "Platform/Platform.h"
#include "Settings/UI/SettingsSources.h"

namespace morvel {

/// All that is referred to outlives the sources.
SettingsSources settingsSources(const Platform& platform, SettingsStore& settings, PinnedAppsStore& pinnedItems,
                                ClampingBlacklist& clampingBlacklist);

}  // namespace morvel
