// The context menus of the running zone's buttons, as plain data.
//
// A menu can outlive the button it was opened on, so the actions handed in here own all they need: ids, process
// numbers and copies of functions, never the button.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Bar/Buttons/OtherScreen.h"
#include "UI/Menu.h"

namespace morvel::WindowMenus {

struct WindowActions {
    std::function<void()> close;
    std::function<void()> quit;
    std::function<void()> pin;
    std::function<void(DisplayID)> moveTo;
};

/// Of a button or row that stands for one real window.
ui::Menu forWindow(const std::string& appName, const std::vector<OtherScreen>& otherScreens,
                   const WindowActions& actions);

struct ApplicationActions {
    std::function<void()> quit;
    std::function<void()> forceQuit;
    std::function<void()> pin;
    std::function<void()> showInFinder;
};

/// Of a button that stands for a whole application: a group, or one without windows.
ui::Menu forApplication(const std::string& appName, const ApplicationActions& actions);

}  // namespace morvel::WindowMenus
