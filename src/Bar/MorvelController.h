// The bar of one display: its panel, the view in it, and where the panel stands.
#pragma once

#include <optional>

#include "AutoHide/AutoHideController.h"
#include "Bar/BarServices.h"
#include "Bar/MorvelView.h"
#include "Display/BarFrame.h"
#include "UI/Panel.h"
#include "Util/Lifetime.h"

namespace morvel {

/// Main thread only. Made for one display by the display manager; destroying it takes the bar away.
class MorvelController {
public:
    /// The panel is shown at once. `screen` has a display identifier.
    MorvelController(const BarServices& services, const Screen& screen, std::optional<SpaceID> spaceID);

    /// Takes the screen as it is now and the Space it shows now.
    void update(const Screen& screen, std::optional<SpaceID> spaceID);
    /// Computes the frame anew; the panel is touched only when it differs.
    void reframe();
    /// Hides the bar at its edge until the pointer comes there, or shows it for good.
    void applyAutoHide(bool enabled);

    Rect<ScreenSpace> frame() const;
    /// At the top edge beside the menu bar, not over it.
    bool isCompactTop() const;
    MorvelView& view() { return view_; }

private:
    void applyReservedSpace();

    BarServices services_;
    Screen screen_;
    MorvelView view_;
    ui::Panel panel_;  // after the view that it shows
    AutoHideController autoHide_;
    Subscription clampSubscription_;
    Subscription autoHideSubscription_;
    Lifetime lifetime_;  // ends first: the view lets go of its pins when it dies
};

}  // namespace morvel
