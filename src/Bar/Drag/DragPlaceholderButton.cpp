#include "Bar/Drag/DragPlaceholderButton.h"

#include <utility>

#include "Bar/Buttons/ButtonGeometry.h"

namespace morvel {

namespace {

constexpr double kWidth = 36;
constexpr double kIconSize = 22;
constexpr double kBackgroundAlpha = 0.08;

}  // namespace

DragPlaceholderButton::DragPlaceholderButton(IconCache& icons, const std::optional<std::string>& bundleID,
                                             ProcessID pid)
    : DragPlaceholderButton(icons, nullptr) {
    iconView_.show(bundleID, pid);
}

DragPlaceholderButton::DragPlaceholderButton(IconCache& icons, ui::ImageRef icon) : iconView_(icons) {
    setCornerRadius(ButtonGeometry::kCornerRadius);
    setBackground(ui::kLabelColor.withAlpha(kBackgroundAlpha));
    addSubview(iconView_);
    iconView_.setImage(std::move(icon));
}

Size DragPlaceholderButton::intrinsicSize() const {
    return {kWidth, ButtonGeometry::kHeight};
}

void DragPlaceholderButton::layout() {
    iconView_.setFrame({(frame().width - kIconSize) / 2, (frame().height - kIconSize) / 2, kIconSize, kIconSize});
}

}  // namespace morvel
