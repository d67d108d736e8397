// The launcher: opens from the Start button, lists the installed applications and opens the one that is chosen.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "Launcher/InstalledApp.h"
#include "Launcher/LauncherView.h"
#include "Settings/SettingsEnums.h"
#include "UI/Popover.h"
#include "Util/Lifetime.h"

namespace morvel {

/// A function that is not set does nothing.
struct LauncherBindings {
    /// Hands over the installed applications, now or in a later turn.
    std::function<void(std::function<void(const std::vector<InstalledApp>&)>)> apps;
    std::function<void(const InstalledApp&)> open;
    /// Called in pairs, to keep the bar shown meanwhile.
    std::function<void()> onWillShow;
    std::function<void()> onDidClose;
};

/// One per bar, owned by it. Main thread only. It takes the keyboard while it is open; a press outside closes it.
class LauncherPopover {
public:
    /// Both outlive the popover.
    LauncherPopover(ui::Toolkit& toolkit, IconCache& icons, LauncherBindings bindings);
    LauncherPopover(const LauncherPopover&) = delete;
    LauncherPopover& operator=(const LauncherPopover&) = delete;

    /// Opens beside `anchor`, on the side away from the screen edge, with nothing typed.
    void show(ui::View& anchor, MorvelEdge barEdge);
    void close() { popover_.close(); }
    bool isShown() const { return popover_.isShown(); }
    /// Opens the application and closes the popover, whether or not it could be opened.
    void launch(const InstalledApp& app);

    /// Null while it is closed.
    LauncherView* view() { return view_.get(); }

private:
    /// What a popover shows stays one view; the launcher's own is made anew in it each time.
    struct Content : ui::View {
        void layout() override {
            for (ui::View* view : subviews()) view->setFrame(bounds());
        }
    };

    void didClose();

    ui::Toolkit& toolkit_;
    IconCache& icons_;
    LauncherBindings bindings_;
    Content content_;
    std::unique_ptr<LauncherView> view_;  // while it is open
    Subscription outsidePresses_;
    Lifetime lifetime_;
    ui::Popover popover_;  // last, so that it is destroyed first and never calls a half-dead object
};

}  // namespace morvel
