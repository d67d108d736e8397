// The bar of one display: its panel, the view in it, and where the panel stands.
#pragma once

#include <memory>
#include <optional>

#include "AutoHide/AutoHideController.h"
#include "Bar/BarServices.h"
#include "Bar/CompactTop/CompactTopRightStripController.h"
#include "Bar/MenuBar/MenuBar.h"
#include "Bar/MorvelView.h"
#include "UI/Panel.h"
#include "Util/Lifetime.h"

namespace morvel {

/// Main thread only. Made for one display by the display manager; destroying it takes the bar away.
class MorvelController {
public:
    /// The panel is shown at once. `screen` has a display identifier; `menuBar` outlives this.
    MorvelController(const BarServices& services, MenuBar& menuBar, const Screen& screen,
                     std::optional<SpaceID> spaceID);

    /// Takes the screen as it is now and the Space it shows now.
    void update(const Screen& screen, std::optional<SpaceID> spaceID);
    /// The display is gone, perhaps for a moment: nothing is shown until the next `update`, or it would be on another.
    void displayWentAway() { autoHide_.setAway(true); }
    /// Computes the frame anew from what the menu bar tells; the panel is touched only when it differs.
    void reframe();
    /// Hides the bar at its edge until the pointer comes there, or shows it for good.
    void applyAutoHide(bool enabled);

    Rect<ScreenSpace> frame() const;
    /// At the top edge beside the menu bar, not over it. Never where the system has no menu bar.
    bool isCompactTop() const;

    /// Whether all of the status items are uncovered in the compact mode, or a few.
    bool isCompactTopExpanded() const { return isExpanded_; }
    void setCompactTopExpanded(bool expanded);
    /// There is one in the compact mode on a display with a menu bar.
    CompactTopRightStripController* rightStrip() { return rightStrip_.get(); }
    MorvelView& view() { return view_; }

private:
    CompactTopState measured() const;
    std::unique_ptr<CompactTopRightStripController> makeRightStrip();
    std::optional<AutoHidePanel> rightStripPanel();
    Rect<ScreenSpace> rightStripFrame() const;
    void updateRightStrip();
    void applyReservedSpace();

    BarServices services_;
    MenuBar& menuBar_;
    Screen screen_;
    bool isExpanded_ = false;  // also kept while the bar is not compact
    CompactTopState compactTop_;
    MorvelView view_;
    ui::Panel panel_;  // after the view that it shows
    std::unique_ptr<CompactTopRightStripController> rightStrip_;
    AutoHideController autoHide_;
    Subscription clampSubscription_;
    Subscription autoHideSubscription_;
    Lifetime lifetime_;  // ends first: the view lets go of its pins when it dies
};

}  // namespace morvel
