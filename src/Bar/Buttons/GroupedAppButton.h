// The button that stands for all windows of one application when the running zone is grouped.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Bar/BarReveal.h"
#include "Bar/Buttons/AppActions.h"
#include "Bar/Buttons/CountBadge.h"
#include "Bar/Buttons/NowPlayingButtonOverlay.h"
#include "Bar/Buttons/NowPlayingHover.h"
#include "Bar/DragHoverRaise/DragHoverRaiseController.h"
#include "Theme/AppIconView.h"
#include "Theme/ButtonServices.h"
#include "UI/ButtonView.h"
#include "WindowSource/WindowSnapshot.h"

namespace morvel {

class GroupedAppButton;

/// As for a window button: the providers are set, a callback that is not set does nothing, and nothing in here refers
/// to the button.
struct GroupedAppButtonBindings {
    std::function<void(GroupedAppButton&)> onClick;
    std::function<void(ProcessID)> onPin;  ///< with the process of the group's first window
    AppActions app;

    std::function<bool()> bordersProvider;
    std::function<ui::Color()> accentProvider;
    /// Who opens the group's list when a drag rests on the button; null for nobody.
    std::function<DragHoverRaiseController*()> dragHoverProvider = [] { return nullptr; };
    NowPlayingControls nowPlayingControls;
    BarReveal reveal;
};

class GroupedAppButton : public ui::ButtonView {
public:
    /// `buttonID` tells this button apart while something is dragged over it; `bundleID` is the group's key, which is
    /// not a bundle identifier for applications that have none.
    GroupedAppButton(ButtonServices services, WindowID buttonID, std::string bundleID,
                     GroupedAppButtonBindings bindings);

    /// The group's windows, in the order in which the popover lists them.
    void update(std::vector<WindowSnapshot> windows);
    /// Takes the record of one of the group's windows, which has a new title.
    void retitle(const WindowSnapshot& window);
    void setNowPlaying(bool nowPlaying);
    /// Restyles from the providers.
    void applyAppearance() override;

    const WindowID& buttonID() const { return buttonID_; }
    const std::string& bundleID() const { return bundleID_; }
    const std::vector<WindowSnapshot>& windows() const { return windows_; }
    bool isNowPlaying() const { return isNowPlaying_; }
    const CountBadge& countBadge() const { return countBadge_; }

    Size intrinsicSize() const override;
    void mouseDown(const ui::MouseEvent& event) override;
    void rightMouseDown(const ui::MouseEvent& event) override;
    void mouseEntered(const ui::MouseEvent& event) override;
    void mouseExited() override;
    bool acceptsDrag(const ui::DragPasteboard& pasteboard) const override;
    ui::DragOperation draggingEntered(const ui::DragInfo& info) override;
    ui::DragOperation draggingUpdated(const ui::DragInfo&) override { return ui::DragOperation::None; }
    void draggingExited() override;
    void draggingEnded() override;
    bool accessibilityPress() override;

protected:
    void layout() override;

private:
    ui::Menu contextMenu() const;

    ui::Toolkit& toolkit_;
    WindowID buttonID_;
    std::string bundleID_;
    GroupedAppButtonBindings bindings_;
    std::vector<WindowSnapshot> windows_;
    AppIconView iconView_;
    CountBadge countBadge_;
    NowPlayingButtonOverlay nowPlayingOverlay_;
    NowPlayingHover nowPlayingHover_;
    bool isNowPlaying_ = false;
};

}  // namespace morvel
