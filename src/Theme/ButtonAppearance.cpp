#include "Theme/ButtonAppearance.h"

#include "Settings/BarEdge.h"
#include "UI/View.h"

namespace morvel {

namespace {

constexpr double kHoverAlpha = 0.18;
constexpr double kRestingWithBordersAlpha = 0.08;
constexpr double kBorderAlpha = 0.1;
constexpr double kBorderWidth = 0.5;
constexpr double kPillAlpha = 0.2;
constexpr double kPillHoverAlpha = 0.3;
constexpr double kFillAlpha = 0.3;
constexpr double kFillHoverAlpha = 0.4;
constexpr double kRowHoverAlpha = 0.2;

ui::Color restingBackground(bool isHovered, bool hasBorders) {
    if (isHovered) return ui::kLabelColor.withAlpha(kHoverAlpha);
    return hasBorders ? ui::kLabelColor.withAlpha(kRestingWithBordersAlpha) : ui::kClear;
}

/// At exactly this alpha: the alpha of a colour that the person chose is replaced, not multiplied, so that a button's
/// states keep their distance whatever the colour.
ui::Color tinted(ui::Color accent, double alpha) {
    accent.rgba.alpha = 1;
    return accent.withAlpha(alpha);
}

ui::Color windowBackground(const WindowButtonState& state) {
    if (state.isActive && state.style == ActiveButtonStyle::Pill)
        return tinted(state.accent, state.isHovered ? kPillHoverAlpha : kPillAlpha);
    if (state.isActive && state.style == ActiveButtonStyle::Fill)
        return tinted(state.accent, state.isHovered ? kFillHoverAlpha : kFillAlpha);
    return restingBackground(state.isHovered, state.hasBorders);
}

ButtonAppearance bordered(const ui::Color& background, bool hasBorders) {
    return {background, hasBorders ? kBorderWidth : 0, ui::kLabelColor.withAlpha(kBorderAlpha)};
}

}  // namespace

ButtonAppearance windowButtonAppearance(const WindowButtonState& state) {
    return bordered(windowBackground(state), state.hasBorders);
}

std::optional<ui::Edge> activeUnderline(const WindowButtonState& state) {
    if (!state.isActive || state.style != ActiveButtonStyle::Underline) return std::nullopt;
    return uiEdge(state.barEdge);
}

ButtonAppearance appButtonAppearance(bool isHovered, bool hasBorders) {
    return bordered(restingBackground(isHovered, hasBorders), hasBorders);
}

bool showsRunningDot(bool isApplication, bool isRunning) {
    return isApplication && isRunning;
}

ButtonAppearance startButtonAppearance(bool isHovered) {
    return {restingBackground(isHovered, false)};
}

ButtonAppearance rowAppearance(bool isHovered) {
    return {isHovered ? ui::kControlAccentColor.withAlpha(kRowHoverAlpha) : ui::kClear};
}

void apply(const ButtonAppearance& appearance, ui::View& view) {
    view.setBackground(appearance.background);
    view.setBorder(appearance.borderWidth, appearance.border);
}

}  // namespace morvel
