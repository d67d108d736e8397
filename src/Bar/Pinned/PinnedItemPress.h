// What the left button does to a view of a pinned item: a click opens it, a pull drags it.
#pragma once

#include "Bar/Buttons/PressTracker.h"
#include "Pinned/PinnedItem.h"
#include "UI/Event.h"
#include "UI/Toolkit.h"
#include "Util/Lifetime.h"

namespace morvel {

/// A member of the view, which passes its events on. While the item is dragged, the view is paler.
class PinnedItemPress {
public:
    PinnedItemPress(ui::View& view, ui::Toolkit& toolkit) : view_(view), toolkit_(toolkit) {}

    void mouseDown(const ui::MouseEvent& event);
    void mouseDragged(const ui::MouseEvent& event, const PinnedItem& item);
    /// Whether that completed a click.
    [[nodiscard]] bool mouseUp(const ui::MouseEvent& event);

private:
    void showAlpha();

    ui::View& view_;
    ui::Toolkit& toolkit_;
    PressTracker press_;
    bool isDragged_ = false;
    Lifetime lifetime_;
};

}  // namespace morvel
