#include "Bar/Buttons/WindowMenus.h"

namespace morvel::WindowMenus {

namespace {

ui::MenuItem pinItem(const std::function<void()>& pin) {
    return {"Pin App to Morvel", pin};
}

ui::MenuItem showInFinderItem(const std::function<void()>& show) {
    return {"Show in Finder", show};
}

ui::MenuItem moveToDisplayItem(const std::vector<OtherScreen>& screens, const std::function<void(DisplayID)>& moveTo) {
    ui::MenuItem item{"Move to Display"};
    for (const OtherScreen& screen : screens) {
        std::function<void()> move;
        if (moveTo) move = [moveTo, display = screen.screenID] { moveTo(display); };
        item.submenu.push_back({screen.name, std::move(move)});
    }
    return item;
}

}  // namespace

ui::Menu forWindow(const std::string& appName, const std::vector<OtherScreen>& otherScreens,
                   const WindowActions& actions) {
    ui::Menu menu{{"Close Window", actions.close}, {"Quit " + appName, actions.quit}, pinItem(actions.pin)};
    if (otherScreens.empty()) return menu;
    menu.push_back(ui::MenuItem::separator());
    menu.push_back(moveToDisplayItem(otherScreens, actions.moveTo));
    return menu;
}

ui::Menu forApplication(const std::string& appName, const ApplicationActions& actions) {
    return {{"Quit " + appName, actions.quit},
            {"Force Quit " + appName, actions.forceQuit},
            ui::MenuItem::separator(),
            pinItem(actions.pin),
            showInFinderItem(actions.showInFinder)};
}

}  // namespace morvel::WindowMenus
