// What all views of one pinned item do: they show its icon, open it with a click, drag it, and have its menu.
#pragma once

#include "Bar/Buttons/PressTracker.h"
#include "Bar/Pinned/PinnedItemActions.h"
#include "Pinned/PinnedItem.h"
#include "Theme/AppIconView.h"
#include "Theme/ButtonServices.h"
#include "UI/ButtonView.h"
#include "Util/Lifetime.h"

namespace morvel {

/// While the item is dragged, the view is paler. Where the icon stands, and when a folder's is read, is for each kind
/// of view to say.
class PinnedItemView : public ui::ButtonView {
public:
    const PinnedItem& pinnedItem() const { return pinnedItem_; }
    const ui::ImageView& iconView() const { return iconView_; }

    void mouseDown(const ui::MouseEvent& event) override;
    void mouseDragged(const ui::MouseEvent& event) override;
    void mouseUp(const ui::MouseEvent& event) override;
    void rightMouseDown(const ui::MouseEvent& event) override;
    bool accessibilityPress() override;

protected:
    /// `process` is one that runs the application, for an icon that only a process shows.
    PinnedItemView(ButtonServices services, const PinnedItem& item, ProcessID process, PinnedItemActions actions);

    AppIconView& icon() { return iconView_; }

private:
    void showAlpha();

    ui::Toolkit& toolkit_;
    PinnedItem pinnedItem_;
    PinnedItemActions actions_;
    AppIconView iconView_;
    PressTracker press_;
    bool isDragged_ = false;
    Lifetime lifetime_;
};

}  // namespace morvel
