// The button that stands for one window, or for an application without windows, in a bar's running zone.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "Bar/BarReveal.h"
#include "Bar/Buttons/AppActions.h"
#include "Bar/Buttons/NowPlayingButtonOverlay.h"
#include "Bar/Buttons/NowPlayingHover.h"
#include "Bar/Buttons/OtherScreen.h"
#include "Bar/Buttons/PressTracker.h"
#include "Bar/DragHoverRaise/DragHoverRaiseController.h"
#include "Settings/SettingsEnums.h"
#include "Theme/AppIconView.h"
#include "Theme/ButtonServices.h"
#include "UI/ButtonView.h"
#include "UI/Label.h"
#include "WindowSource/WindowSnapshot.h"

namespace morvel {

/// What a window button does and how it learns its looks. The providers are asked whenever the button restyles, so a
/// changed setting needs no new button; all of them are set. A callback that is not set does nothing. Menus keep
/// copies, so nothing in here may refer to the button.
struct WindowButtonBindings {
    std::function<void()> onClick;
    std::function<void()> onMinimize;
    std::function<void()> onClose;
    std::function<void()> onPin;
    std::function<void(DisplayID)> onMoveTo;
    AppActions app;

    std::function<std::vector<OtherScreen>()> otherScreensProvider;
    std::function<std::optional<double>()> widthProvider;  ///< points; absent where each button follows its title
    std::function<bool()> bordersProvider;
    std::function<ActiveButtonStyle()> activeStyleProvider;
    std::function<ui::Color()> accentProvider;
    std::function<MorvelEdge()> barEdgeProvider;
    /// Who raises the window when a drag rests on the button; null for nobody.
    std::function<DragHoverRaiseController*()> dragHoverProvider = [] { return nullptr; };
    NowPlayingControls nowPlayingControls;
    BarReveal reveal;
};

class WindowButton : public ui::ButtonView {
public:
    WindowButton(ButtonServices services, const WindowSnapshot& snapshot, bool isIconOnly,
                 WindowButtonBindings bindings);

    /// Shows the window's new state. What did not change is not touched.
    void update(const WindowSnapshot& snapshot);
    void setActive(bool active);
    void setIconOnly(bool iconOnly);
    void setNowPlaying(bool nowPlaying);

    /// Restyles from the providers.
    void applyAppearance() override;
    /// Takes the width from its provider anew.
    void applyWidthConstraint();

    const WindowSnapshot& snapshot() const { return snapshot_; }
    bool isActive() const { return isActive_; }
    bool isIconOnly() const { return isIconOnly_; }
    bool isNowPlaying() const { return isNowPlaying_; }
    const ui::Label& titleLabel() const { return titleLabel_; }

    Size intrinsicSize() const override;
    void mouseDown(const ui::MouseEvent& event) override;
    void mouseDragged(const ui::MouseEvent& event) override;
    void mouseUp(const ui::MouseEvent& event) override;
    void rightMouseDown(const ui::MouseEvent& event) override;
    void mouseEntered(const ui::MouseEvent& event) override;
    void mouseExited() override;
    /// What is dropped is not taken: a drag that rests here raises the window and goes on to it.
    bool acceptsDrag(const ui::DragPasteboard& pasteboard) const override;
    ui::DragOperation draggingEntered(const ui::DragInfo& info) override;
    ui::DragOperation draggingUpdated(const ui::DragInfo&) override { return ui::DragOperation::None; }
    void draggingExited() override;
    void draggingEnded() override;
    bool accessibilityPress() override;

protected:
    void layout() override;

private:
    void showTexts();
    void showAlpha();
    void beginDrag();
    void layoutUnderline();
    ui::Menu contextMenu() const;

    ui::Toolkit& toolkit_;
    WindowButtonBindings bindings_;
    WindowSnapshot snapshot_;
    AppIconView iconView_;
    ui::Label titleLabel_;
    ui::View activeUnderline_;
    NowPlayingButtonOverlay nowPlayingOverlay_;
    std::optional<ui::Edge> underlineEdge_;
    double width_ = 0;  // what intrinsicSize tells, in points
    NowPlayingHover nowPlayingHover_;
    PressTracker press_;
    bool isDragged_ = false;
    bool isActive_ = false;
    bool isIconOnly_;
    bool isNowPlaying_ = false;
    Lifetime lifetime_;
};

}  // namespace morvel
