// The bar of one display: its panel, the view in it, and where the panel stands.
#pragma once

#include <optional>

#include "Bar/BarServices.h"
#include "Bar/MorvelView.h"
#include "Display/BarFrame.h"
#include "UI/Panel.h"

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

    Rect<ScreenSpace> frame() const;
    /// At the top edge beside the menu bar, not over it.
    bool isCompactTop() const;
    MorvelView& view() { return view_; }

private:
    BarServices services_;
    Screen screen_;
    MorvelView view_;
    ui::Panel panel_;  // after the view that it shows
    Subscription clampSubscription_;
};

}  // namespace morvel
