#include "Launcher/LauncherRow.h"

#include <algorithm>
#include <utility>

#include "Theme/ButtonAppearance.h"

namespace morvel {

namespace {

constexpr double kInset = 8;  // of the contents from the list's edges, and between icon and name
constexpr double kIconSize = 20;
constexpr double kCornerRadius = 5;  // of the highlight

}  // namespace

LauncherRow::LauncherRow(ui::Toolkit& toolkit, IconCache& icons, std::function<void(const LauncherRow&)> onClick)
    : onClick_(std::move(onClick)), iconView_(icons), nameLabel_(toolkit, {.size = 13}) {
    setCornerRadius(kCornerRadius);
    addSubview(iconView_);
    addSubview(nameLabel_);
}

void LauncherRow::show(const std::string& name, const std::string& path, RowState state) {
    state_ = state;
    nameLabel_.setText(name);
    setAccessibilityLabel(name);
    iconView_.showFile(path);
    applyAppearance();
}

void LauncherRow::applyAppearance() {
    const bool isSelected = state_ == RowState::Selected;
    nameLabel_.setColor(isSelected ? ui::kWhiteColor : ui::kLabelColor);
    if (isSelected) return setBackground(ui::kControlAccentColor);
    apply(rowAppearance(isHovered()), *this);
}

void LauncherRow::mouseUp(const ui::MouseEvent& event) {
    if (isReleasedInside(event)) accessibilityPress();
}

bool LauncherRow::accessibilityPress() {
    const auto click = onClick_;  // closes the popover and with it destroys this row
    click(*this);
    return true;
}

void LauncherRow::layout() {
    iconView_.setFrame({kInset - kMargin, (frame().height - kIconSize) / 2, kIconSize, kIconSize});
    const double x = iconView_.frame().maxX() + kInset;
    const double height = nameLabel_.intrinsicSize().height;
    nameLabel_.setFrame(
        {x, (frame().height - height) / 2, std::max(0.0, frame().width - kInset + kMargin - x), height});
}

}  // namespace morvel
