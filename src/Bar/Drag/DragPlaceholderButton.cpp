#include "Bar/Drag/DragPlaceholderButton.h"

#include "Bar/Buttons/ButtonGeometry.h"

namespace morvel {

namespace {

constexpr double kWidth = 36;
constexpr double kIconSize = 22;
constexpr double kBackgroundAlpha = 0.08;

}  // namespace

DragPlaceholderButton::DragPlaceholderButton(IconCache& icons, const std::optional<std::string>& bundleID,
                                             ProcessID pid)
    : iconView_(icons) {
    setCornerRadius(ButtonGeometry::kCornerRadius);
    setBackground(ui::kLabelColor.withAlpha(kBackgroundAlpha));
    addSubview(iconView_);
    iconView_.show(bundleID, pid);
}

Size DragPlaceholderButton::intrinsicSize() const {
    return {kWidth, ButtonGeometry::kHeight};
}

void DragPlaceholderButton::layout() {
    iconView_.setFrame({(frame().width - kIconSize) / 2, (frame().height - kIconSize) / 2, kIconSize, kIconSize});
}

}  // namespace morvel
