// The button of one pinned item in a bar's launch strip.
#pragma once

#include <functional>

#include "Bar/Buttons/ButtonServices.h"
#include "Bar/Pinned/PinnedIconView.h"
#include "Bar/Pinned/PinnedItemActions.h"
#include "Bar/Pinned/PinnedItemPress.h"
#include "UI/View.h"

namespace morvel {

/// The two providers are set; they are asked whenever the button restyles.
struct PinnedAppButtonBindings {
    PinnedItemActions actions;
    std::function<bool()> bordersProvider;
    std::function<ui::Color()> accentProvider;
    /// Files were dropped on the button; whether they could be pinned. May destroy it.
    std::function<bool(const ui::DragInfo&)> onFileDrop;
    /// Called in pairs around a menu, to keep the bar shown meanwhile; kept by the menu.
    std::function<void()> pinReveal;
    std::function<void()> unpinReveal;
};

class PinnedAppButton : public ui::View {
public:
    static constexpr double kWidth = 36;  ///< in points; a button as wide as the tile that keeps its place in a drag

    /// `process` is one that runs the application, if any does.
    PinnedAppButton(ButtonServices services, const PinnedItem& item, ProcessID process,
                    PinnedAppButtonBindings bindings);

    void setRunning(bool running);
    void refreshAccent();
    void refreshBorders() { applyAppearance(); }

    const PinnedItem& pinnedItem() const { return pinnedItem_; }
    const ui::ImageView& iconView() const { return iconView_; }
    const ui::View& runningDot() const { return runningDot_; }

    Size intrinsicSize() const override;
    bool acceptsMouse() const override { return true; }
    bool tracksHover() const override { return true; }
    void mouseDown(const ui::MouseEvent& event) override { press_.mouseDown(event); }
    void mouseDragged(const ui::MouseEvent& event) override { press_.mouseDragged(event, pinnedItem_); }
    void mouseUp(const ui::MouseEvent& event) override;
    void rightMouseDown(const ui::MouseEvent& event) override;
    void mouseEntered(const ui::MouseEvent& event) override;
    void mouseExited() override;
    /// Files are pinned beside it. What is dragged within the bars is the strip's.
    bool acceptsDrag(const ui::DragPasteboard& pasteboard) const override;
    ui::DragOperation draggingEntered(const ui::DragInfo& info) override;
    bool performDragOperation(const ui::DragInfo& info) override;
    ui::AccessibilityRole accessibilityRole() const override { return ui::AccessibilityRole::Button; }
    bool accessibilityPress() override;

protected:
    void layout() override;

private:
    void applyAppearance();

    ui::Toolkit& toolkit_;
    PinnedItem pinnedItem_;
    PinnedAppButtonBindings bindings_;
    PinnedIconView iconView_;
    ui::View runningDot_;
    PinnedItemPress press_;
    bool isRunning_ = false;
    bool isHovered_ = false;
};

}  // namespace morvel
