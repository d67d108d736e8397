// One window's row in the group popover.
#pragma once

#include <functional>
#include <vector>

#include "Bar/BarReveal.h"
#include "Bar/Buttons/OtherScreen.h"
#include "Theme/AppIconView.h"
#include "Theme/ButtonServices.h"
#include "UI/ButtonView.h"
#include "UI/ImageButton.h"
#include "UI/Label.h"
#include "WindowSource/WindowSnapshot.h"

namespace morvel {

/// All are set. Menus keep copies of all but `onActivate` and `onCloseClicked`, so those refer to nothing that may be
/// gone when a menu is used.
struct GroupRowBindings {
    std::function<void()> onActivate;
    std::function<void()> onCloseClicked;  ///< by the row's own button
    std::function<void()> onClose;         ///< by the menu
    std::function<void()> onPin;
    std::function<void()> onQuit;
    std::function<void(DisplayID)> onMoveTo;
    std::function<std::vector<OtherScreen>()> otherScreensProvider;
    BarReveal reveal;
    std::function<void(const ui::DragPasteboard&)> onDragEntered;
    std::function<void()> onDragExited;
    std::function<void()> onDragEnded;
};

class GroupRowButton : public ui::ButtonView {
public:
    static constexpr double kHeight = 36;  ///< in points

    GroupRowButton(ButtonServices services, const WindowSnapshot& snapshot, GroupRowBindings bindings);

    void update(const WindowSnapshot& snapshot);

    const WindowSnapshot& snapshot() const { return snapshot_; }
    const ui::Label& titleLabel() const { return titleLabel_; }
    const ui::ImageButton& closeButton() const { return closeButton_; }

    Size intrinsicSize() const override;
    void mouseUp(const ui::MouseEvent& event) override;
    void rightMouseDown(const ui::MouseEvent& event) override;
    bool acceptsDrag(const ui::DragPasteboard& pasteboard) const override;
    ui::DragOperation draggingEntered(const ui::DragInfo& info) override;
    ui::DragOperation draggingUpdated(const ui::DragInfo&) override { return ui::DragOperation::None; }
    void draggingExited() override;
    void draggingEnded() override;
    bool accessibilityPress() override;

protected:
    void applyAppearance() override;
    void layout() override;

private:
    ui::Toolkit& toolkit_;
    GroupRowBindings bindings_;
    WindowSnapshot snapshot_;
    AppIconView iconView_;
    ui::Label titleLabel_;
    ui::ImageButton closeButton_;
    bool isDraggedOver_ = false;
};

}  // namespace morvel
