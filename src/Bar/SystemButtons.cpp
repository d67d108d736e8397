#include "Bar/SystemButtons.h"

#include <utility>

namespace morvel {

SystemButtons::SystemButtons(const BarServices& services, BarReveal reveal, std::function<void()> pressed,
                             std::function<void()> changed)
    : services_(services),
      startButton_(services.icons, StartButton::Kind::Start,
                   [this, pressed](ui::View&) {
                       pressed();
                       startClicked();
                   }),
      appleMenuButton_(services.icons, StartButton::Kind::AppleMenu,
                       [&actions = services.actions, pressed](ui::View&) {
                           pressed();
                           actions.onAppleMenu();
                       }),
      launcherPopover_(services.toolkit, services.iconCache,
                       {.apps = services.actions.installedApps,
                        .open = services.actions.onLaunchApp,
                        .onWillShow = std::move(reveal.pinReveal),
                        .onDidClose = std::move(reveal.unpinReveal)}) {
    const auto updates = [this, changed = std::move(changed)](bool) {
        // A popover cannot stay without what it belongs to.
        if (!services_.settings.showStartButton.value()) launcherPopover_.close();
        changed();
    };
    subscriptions_.push_back(services.settings.showStartButton.subscribe(updates, Current::Skip));
    subscriptions_.push_back(services.settings.showAppleMenuButton.subscribe(updates, Current::Skip));
}

std::vector<ui::View*> SystemButtons::shown() {
    std::vector<ui::View*> buttons;
    if (services_.settings.showStartButton.value()) buttons.push_back(&startButton_);
    // Where the system has no such menu there is no button for it either.
    if (services_.settings.showAppleMenuButton.value() && services_.actions.onAppleMenu)
        buttons.push_back(&appleMenuButton_);
    return buttons;
}

void SystemButtons::startClicked() {
    if (launcherPopover_.isShown()) return launcherPopover_.close();
    launcherPopover_.show(startButton_, services_.settings.barEdge.value());
}

}  // namespace morvel
