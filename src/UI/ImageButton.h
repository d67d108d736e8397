// A borderless button that shows an image and acts when a press is released over it.
#pragma once

#include <functional>

#include "UI/ImageView.h"

namespace morvel::ui {

class ImageButton : public View {
public:
    ImageButton() { addSubview(imageView_); }

    std::function<void()> onClick;

    ImageView& imageView() { return imageView_; }

    bool acceptsMouse() const override { return true; }
    void mouseUp(const MouseEvent& event) override;
    AccessibilityRole accessibilityRole() const override { return AccessibilityRole::Button; }
    bool accessibilityPress() override;

protected:
    void layout() override { imageView_.setFrame(bounds()); }

private:
    ImageView imageView_;
};

}  // namespace morvel::ui
