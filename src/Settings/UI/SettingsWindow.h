// The window in which a person changes the settings; every change takes effect at once.
#pragma once

#include <memory>

#include "Platform/MainLoop.h"
#include "Settings/UI/SettingsSources.h"
#include "UI/Toolkit.h"

namespace morvel {

/// Main thread only. At most one window, made when it is first shown; closing it hides it.
class SettingsWindow {
public:
    static constexpr Size kContentSize{720, 560};

    /// All that is handed over outlives the window.
    SettingsWindow(ui::Toolkit& toolkit, MainLoop& mainLoop, SettingsSources sources);
    SettingsWindow(const SettingsWindow&) = delete;
    SettingsWindow& operator=(const SettingsWindow&) = delete;

    /// Shows the window or brings it to the front. Does nothing where the host has no such windows.
    void show();

private:
    ui::Form form();
    void observeChanges();
    /// In a turn of its own: once for all that changes together, and never inside a control's own action.
    void refreshSoon();

    ui::Toolkit& toolkit_;
    MainLoop& mainLoop_;
    SettingsSources sources_;
    std::unique_ptr<ui::FormWindowPeer> window_;
    Timer refresh_;
    Subscriptions subscriptions_;
};

}  // namespace morvel
