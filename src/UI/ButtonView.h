// A view that a person presses, and that shows when the pointer is over it.
#pragma once

#include "UI/View.h"

namespace morvel::ui {

/// What a click does is `accessibilityPress`, so that it is the same without a pointer. Which events are a click is for
/// each button to say.
class ButtonView : public View {
public:
    bool isHovered() const { return isHovered_; }

    bool acceptsMouse() const override { return true; }
    bool tracksHover() const override { return true; }
    void mouseEntered(const MouseEvent&) override { setHovered(true); }
    void mouseExited() override { setHovered(false); }
    AccessibilityRole accessibilityRole() const override { return AccessibilityRole::Button; }

protected:
    /// Colours the button as its state and the pointer have it.
    virtual void applyAppearance() = 0;

    /// Whether this mouse button was let go over the view.
    bool isReleasedInside(const MouseEvent& event, MouseButton button = MouseButton::Left) const {
        return event.button == button && bounds().contains(fromRoot(event.location));
    }

private:
    void setHovered(bool isHovered) {
        isHovered_ = isHovered;
        applyAppearance();
    }

    bool isHovered_ = false;
};

}  // namespace morvel::ui
