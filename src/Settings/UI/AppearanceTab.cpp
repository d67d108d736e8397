#include <algorithm>
#include <cmath>
#include <cstdio>

#include "Settings/UI/Bindings.h"
#include "Settings/UI/SettingsTabs.h"
#include "Theme/AccentResolver.h"

namespace morvel::tabs {

namespace {

using namespace bindings;

constexpr ui::RGBA kFallbackColor{10 / 255.0, 132 / 255.0, 1, 1};  // the setting's default

/// RRGGBBAA in upper case.
std::string hexText(const ui::RGBA& color) {
    const auto byte = [](double component) {
        return static_cast<unsigned long long>(std::lround(std::clamp(component, 0.0, 1.0) * 255));
    };
    char text[17];
    std::snprintf(text, sizeof text, "%08llX",
                  byte(color.red) << 24 | byte(color.green) << 16 | byte(color.blue) << 8 | byte(color.alpha));
    return text;
}

ui::FormControl colorWell(std::string label, Setting<std::string>& setting) {
    return {std::move(label),
            {},
            ui::FormColorWell{[&setting] { return AccentResolver::parse(setting.value()).value_or(kFallbackColor); },
                              [&setting](ui::RGBA color) { setting.set(hexText(color)); }}};
}

ui::FormSection barHeight(SettingsStore& settings, const Features& features) {
    const auto isLocked = [&settings, hasMenuBar = features.hasMenuBar] {
        return hasMenuBar && settings.barEdge.value() == MorvelEdge::Top && settings.matchMenuBarHeight.value();
    };
    const ui::FormControl locked{
        {}, {}, ui::FormText{[] {
            return "Locked when the bar is at the top edge with “Match macOS menu bar height” enabled (Behavior → Top "
                   "edge). The bar uses the macOS menu-bar height of each display automatically. Disable that toggle "
                   "to set a custom height.";
        }}};
    return {"Bar Height",
            {enabledWhen([isLocked] { return !isLocked(); }, slider("Bar height", settings.barHeight, 24, 64)),
             visibleWhen(isLocked, locked)}};
}

ui::FormSection accent(SettingsStore& settings, const Features& features) {
    const std::string help = "Custom uses the picker color across active buttons, badges, and running-app dots.";
    return {
        "Accent",
        {picker("Color", settings.accentColorMode, {"System", "Custom"},
                (features.hasMenuBar ? "System follows the macOS accent. " : "System follows the desktop's accent. ") +
                    help),
         colorWell("Custom color", settings.accentColorCustom)}};
}

ui::FormSection windowButtons(SettingsStore& settings) {
    const auto isCustom = [&settings] {
        return settings.windowButtonWidthMode.value() == WindowButtonWidthMode::Custom;
    };
    return {"Window Buttons",
            {toggle("Show button borders", settings.showButtonBorders),
             picker("Width", settings.windowButtonWidthMode, {"Default (fixed)", "Free (size to content)", "Custom"},
                    "Default uses one fixed width for every running button. Free lets each button grow with its title "
                    "up to 220pt. Custom uses the slider value."),
             visibleWhen(isCustom, slider("Custom width", settings.windowButtonCustomWidth, 60, 320))}};
}

}  // namespace

ui::FormTab appearance(const SettingsSources& sources) {
    SettingsStore& settings = sources.settings;
    ui::FormTab tab{"appearance",
                    "Appearance",
                    {{"Theme", {picker("Theme", settings.theme, {"System", "Light", "Dark"})}},
                     barHeight(settings, sources.features),
                     {"Active Button",
                      {picker("Active button style", settings.activeButtonStyle, {"Pill", "Underline", "Fill"},
                              "How the running-window button shows its frontmost state.")}},
                     accent(settings, sources.features),
                     {"Background",
                      {picker("Style", settings.barBackgroundStyle, {"Translucent", "Opaque", "Clear"}),
                       picker("Blur", settings.barBlurIntensity, {"Sheer", "Frosted", "Solid"})}}}};
    if (sources.features.hasMenuBar)
        tab.sections.push_back(
            {"Menu Bar",
             {toggle("Show icon in macOS menu bar", settings.showMenuBarIcon,
                     "The menu-bar icon opens Morvel Settings and Quit. The same menu is reachable by right-clicking "
                     "an empty area of the morvel, so hiding the icon is safe.")}});
    tab.sections.push_back(windowButtons(settings));
    return tab;
}

}  // namespace morvel::tabs
