#include "UI/ImageButton.h"

namespace morvel::ui {

void ImageButton::mouseUp(const MouseEvent& event) {
    if (event.button != MouseButton::Left || !onClick || !bounds().contains(fromRoot(event.location))) return;
    const auto click = onClick;  // the action may destroy this button
    click();
}

}  // namespace morvel::ui
