#include "Launcher/StartButton.h"

#include <utility>

#include "Theme/ButtonAppearance.h"

namespace morvel {

namespace {

constexpr Size kSize{36, 36};
constexpr double kCornerRadius = 4;
constexpr double kIconSize = 18;
/// Symbols are a little wider than the font they are made for; this one's just fits the icon's square.
constexpr double kSymbolPointSize = 15;

}  // namespace

StartButton::StartButton(Icons& icons, Kind kind, std::function<void(ui::View&)> onClick)
    : onClick_(std::move(onClick)) {
    setCornerRadius(kCornerRadius);
    setTooltip(tooltip(kind));
    setAccessibilityLabel(tooltip(kind));
    iconView_.setImage(icons.symbol(symbolName(kind), kSymbolPointSize));
    addSubview(iconView_);
}

std::string StartButton::symbolName(Kind kind) {
    return kind == Kind::Start ? "circle.grid.3x3.fill" : "applelogo";
}

std::string StartButton::tooltip(Kind kind) {
    return kind == Kind::Start ? "Apps" : "Apple menu";
}

Size StartButton::intrinsicSize() const {
    return kSize;
}

void StartButton::mouseDown(const ui::MouseEvent& event) {
    if (event.button == ui::MouseButton::Left) accessibilityPress();
}

bool StartButton::accessibilityPress() {
    const auto click = onClick_;  // may destroy this button
    if (click) click(*this);
    return true;
}

void StartButton::applyAppearance() {
    apply(startButtonAppearance(isHovered()), *this);
}

void StartButton::layout() {
    iconView_.setFrame({(frame().width - kIconSize) / 2, (frame().height - kIconSize) / 2, kIconSize, kIconSize});
}

}  // namespace morvel
