// The small panel beside a compact top bar's right buffer, with the toggle that changes the buffer.
#pragma once

#include <functional>

#include "Bar/CompactTop/CompactTopExpansionToggleButton.h"
#include "Bar/CompactTop/CompactTopRightStripPanel.h"
#include "Platform/Icons.h"
#include "UI/Toolkit.h"

namespace morvel {

/// Main thread only. Destroying it takes the panel away.
class CompactTopRightStripController {
public:
    /// The panel is not shown yet. Toolkit and icons outlive this.
    CompactTopRightStripController(ui::Toolkit& toolkit, Icons& icons, const Rect<ScreenSpace>& frame,
                                   std::function<void()> onToggle)
        : button_(icons, std::move(onToggle)), panel_(toolkit, frame, button_) {}

    void setExpanded(bool expanded) { button_.setExpanded(expanded); }

    CompactTopExpansionToggleButton& expansionToggleButton() { return button_; }
    /// For what shows, moves and hides it together with the bar.
    CompactTopRightStripPanel& panel() { return panel_; }

private:
    CompactTopExpansionToggleButton button_;
    CompactTopRightStripPanel panel_;  // after the button that it shows
};

}  // namespace morvel
