// Slides a bar's panel off the screen edge when the pointer has left it, and back when the pointer touches the edge.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "AutoHide/EdgeRevealTrigger.h"
#include "AutoHide/PanelMouseObserver.h"
#include "Platform/MainLoop.h"
#include "Platform/Screens.h"
#include "Settings/SettingsEnums.h"
#include "UI/Panel.h"

namespace morvel {

/// What the controller asks; all outlive it.
struct AutoHideServices {
    ui::Toolkit& toolkit;
    MainLoop& mainLoop;
    Screens& screens;
};

/// A panel, which outlives the controller, and its frame while it is shown.
struct AutoHidePanel {
    ui::Panel& panel;
    std::function<Rect<ScreenSpace>()> onScreenFrame;
};

/// Main thread only. Decides at any time where its panels are and whether they are on the screen: a stopped controller
/// shows them and lets them be. No timer runs while the bar is hidden, or shown with the pointer over it.
class AutoHideController {
public:
    /// Stopped, and nothing is shown before `start` or `stop`. The secondary panel moves together with the bar's.
    AutoHideController(const AutoHideServices& services, MorvelEdge edge, AutoHidePanel panel,
                       std::optional<AutoHidePanel> secondary = std::nullopt);

    /// Another secondary panel, or none any more; after `start` or `stop`. It is put to where the bar's panel is, shown
    /// or hidden as that one.
    void setSecondary(std::optional<AutoHidePanel> secondary);

    /// Hides the bar at once.
    void start();
    /// Shows the bar at once, for good.
    void stop();
    /// The frames may have changed: what is shown and what is hidden is put where it belongs now, without sliding.
    void updateGeometry();

    /// Nothing is shown and no pointer waited for, whatever else is asked for, while the display is gone.
    void setAway(bool isAway);

    /// Holds the bar shown, until as many `unpinReveal`s have followed. Counted while stopped too.
    void pinReveal();
    void unpinReveal();

    bool isShown() const { return isShown_; }
    int revealPinCount() const { return revealPinCount_; }

private:
    enum class Animate { No, Yes };
    enum class Presence { NotYet, OnScreen, OrderedOut };

    /// What is installed in each panel while auto-hide runs.
    struct Tracking {
        ui::Panel* panel;
        std::unique_ptr<PanelMouseObserver> observer;
    };

    void reveal();
    void hide();
    void stripEntered();
    void pointerMoved(bool inside);
    void scheduleRehide();
    void countdownEnded();
    void place(Animate animate);
    void armTrigger();
    /// How far the panels move to be out of sight; nothing where that would be in the sight of another display.
    std::optional<double> slideDistance() const;
    bool isPointerOverPanels() const;
    void installPanelTracking(const AutoHidePanel& panel);
    void layoutPanelTracking();

    AutoHideServices services_;
    const MorvelEdge edge_;
    std::vector<AutoHidePanel> panels_;           // the bar's first
    std::unique_ptr<EdgeRevealTrigger> trigger_;  // while auto-hide runs
    std::vector<Tracking> tracking_;
    Timer rehideTimer_;
    Presence presence_ = Presence::NotYet;
    bool isShown_ = true;
    bool isAway_ = false;
    bool isPointerInside_ = false;  // as the panels told it last
    int revealPinCount_ = 0;
};

}  // namespace morvel
