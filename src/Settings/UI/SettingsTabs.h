// The tabs of the settings window, each as the data that it is built from.
#pragma once

#include <functional>

#include "Settings/UI/SettingsSources.h"
#include "UI/Form.h"

namespace morvel::tabs {

// What the controls refer to outlives them. Where the sources lack a feature, its controls are absent.

/// `changed` is called when an export or import has come to something.
ui::FormTab general(const SettingsSources& sources, std::function<void()> changed);
ui::FormTab appearance(const SettingsSources& sources);
ui::FormTab behavior(const SettingsSources& sources);
/// Pinned items and the two blacklists.
ui::FormTab lists(const SettingsSources& sources);
ui::FormTab about(const SettingsSources& sources);

}  // namespace morvel::tabs
