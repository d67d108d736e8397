// One pinned item's row in the list of those that have no place on the bar.
#pragma once

#include "Bar/Buttons/ButtonServices.h"
#include "Bar/Pinned/PinnedIconView.h"
#include "Bar/Pinned/PinnedItemActions.h"
#include "Bar/Pinned/PinnedItemPress.h"
#include "UI/Label.h"

namespace morvel {

class PinnedOverflowRow : public ui::View {
public:
    static constexpr double kHeight = 32;  ///< in points

    /// `process` is one that runs the application, if any does.
    PinnedOverflowRow(ButtonServices services, const PinnedItem& item, ProcessID process, PinnedItemActions actions);

    const PinnedItem& pinnedItem() const { return pinnedItem_; }

    Size intrinsicSize() const override { return {0, kHeight}; }  // as wide as the list
    bool acceptsMouse() const override { return true; }
    bool tracksHover() const override { return true; }
    void mouseDown(const ui::MouseEvent& event) override { press_.mouseDown(event); }
    void mouseDragged(const ui::MouseEvent& event) override { press_.mouseDragged(event, pinnedItem_); }
    void mouseUp(const ui::MouseEvent& event) override;
    void rightMouseDown(const ui::MouseEvent& event) override;
    void mouseEntered(const ui::MouseEvent& event) override;
    void mouseExited() override;
    ui::AccessibilityRole accessibilityRole() const override { return ui::AccessibilityRole::Button; }
    bool accessibilityPress() override;

protected:
    void layout() override;

private:
    ui::Toolkit& toolkit_;
    PinnedItem pinnedItem_;
    PinnedItemActions actions_;
    PinnedIconView iconView_;
    ui::Label titleLabel_;
    PinnedItemPress press_;
};

}  // namespace morvel
