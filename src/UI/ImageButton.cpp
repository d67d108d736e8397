#include "UI/ImageButton.h"

namespace morvel::ui {

void ImageButton::mouseUp(const MouseEvent& event) {
    if (event.button == MouseButton::Left && bounds().contains(fromRoot(event.location))) accessibilityPress();
}

bool ImageButton::accessibilityPress() {
    if (!onClick) return false;
    const auto click = onClick;  // the action may destroy this button
    click();
    return true;
}

}  // namespace morvel::ui
