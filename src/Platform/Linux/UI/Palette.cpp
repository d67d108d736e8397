#include "Platform/Linux/UI/Palette.h"

#include <cstdlib>
#include <string_view>

namespace morvel::x11 {

namespace {

constexpr ui::RGBA gray(double level, double alpha = 1) {
    return {level, level, level, alpha};
}

}  // namespace

ui::RGBA Palette::resolve(const ui::Color& color) const {
    ui::RGBA out;
    switch (color.role) {
        case ui::ColorRole::Clear:
            return {0, 0, 0, 0};
        case ui::ColorRole::Label:
            out = isDark() ? gray(1, 0.88) : gray(0, 0.85);
            break;
        case ui::ColorRole::SecondaryLabel:
            out = isDark() ? gray(1, 0.55) : gray(0, 0.52);
            break;
        case ui::ColorRole::ControlAccent:
            out = accent;
            break;
        case ui::ColorRole::WindowBackground:
            out = isDark() ? ui::RGBA{0.118, 0.118, 0.129} : gray(0.925);
            break;
        case ui::ColorRole::Separator:
            out = isDark() ? gray(1, 0.14) : gray(0, 0.13);
            break;
        case ui::ColorRole::SystemRed:
            out = isDark() ? ui::RGBA{1, 0.271, 0.227} : ui::RGBA{1, 0.231, 0.188};
            break;
        case ui::ColorRole::White:
            out = gray(1);
            break;
        case ui::ColorRole::Custom:
            out = color.rgba;
            break;
    }
    out.alpha *= color.alpha;
    return out;
}

// Nothing blurs what is behind, so the materials are denser than where the system does: text must stay legible over
// any window.
ui::RGBA Palette::material(ui::Material material, bool isComposited) const {
    ui::RGBA out = isDark() ? ui::RGBA{0.145, 0.145, 0.157} : ui::RGBA{0.957, 0.957, 0.965};
    if (!isComposited) return out;
    switch (material) {
        case ui::Material::Popover:
            out.alpha = 0.80;
            break;
        case ui::Material::HUDWindow:
            out.alpha = 0.86;
            break;
        case ui::Material::Sidebar:
            out.alpha = 0.92;
            break;
    }
    return out;
}

ui::RGBA Palette::bubble(bool isComposited) const {
    const double alpha = isComposited ? 0.97 : 1;
    return isDark() ? ui::RGBA{0.165, 0.165, 0.176, alpha} : ui::RGBA{0.976, 0.976, 0.980, alpha};
}

ui::RGBA Palette::bubbleBorder() const {
    return isDark() ? gray(1, 0.18) : gray(0, 0.22);
}

ui::RGBA Palette::textField() const {
    return isDark() ? gray(1, 0.08) : gray(1);
}

Appearance appearanceOfTheme(std::string_view name) {
    const bool isDark = name.ends_with(":dark") || name.ends_with("-dark") || name.ends_with("-Dark");
    return isDark ? Appearance::Dark : Appearance::Light;
}

std::optional<Appearance> appearanceFromEnvironment() {
    const char* name = std::getenv("GTK_THEME");
    return name && *name ? std::optional(appearanceOfTheme(name)) : std::nullopt;
}

}  // namespace morvel::x11
