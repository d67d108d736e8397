// The system buttons at the front of a bar, and the launcher that opens from one of them.
#pragma once

#include <functional>
#include <vector>

#include "Bar/BarReveal.h"
#include "Bar/BarServices.h"
#include "Launcher/LauncherPopover.h"
#include "Launcher/StartButton.h"

namespace morvel {

/// Main thread only. The settings decide which are shown; the bar places them.
class SystemButtons {
public:
    /// `pressed` is called before a button acts; `changed` when other buttons are to be shown than before.
    SystemButtons(const BarServices& services, BarReveal reveal, std::function<void()> pressed,
                  std::function<void()> changed);

    /// In their order from the leading end.
    std::vector<ui::View*> shown();

private:
    void startClicked();

    BarServices services_;
    StartButton startButton_;
    StartButton appleMenuButton_;
    LauncherPopover launcherPopover_;
    Subscriptions subscriptions_;
};

}  // namespace morvel
