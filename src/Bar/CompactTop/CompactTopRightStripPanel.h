// The window of the expansion toggle.
#pragma once

#include "UI/Panel.h"

namespace morvel {

/// Stands in front of the bar that it was shown after, and can become neither key nor main, as no panel can.
class CompactTopRightStripPanel : public ui::Panel {
public:
    CompactTopRightStripPanel(ui::Toolkit& toolkit, const Rect<ScreenSpace>& frame, ui::View& content)
        : Panel(toolkit, {frame, ui::Edge::Top, ui::PanelKind::Companion}, content) {}
};

}  // namespace morvel
