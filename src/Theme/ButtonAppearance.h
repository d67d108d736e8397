// How each kind of button looks in each of its states.
#pragma once

#include <optional>

#include "Settings/SettingsEnums.h"
#include "UI/Color.h"
#include "UI/Edge.h"

namespace morvel {

namespace ui {
class View;
}

struct ButtonAppearance {
    ui::Color background = ui::kClear;
    double borderWidth = 0;  ///< in points
    ui::Color border = ui::kClear;
    bool operator==(const ButtonAppearance&) const = default;
};

struct WindowButtonState {
    bool isActive = false;
    bool isHovered = false;
    bool hasBorders = false;
    ActiveButtonStyle style = ActiveButtonStyle::Pill;
    ui::Color accent = ui::kControlAccentColor;
    MorvelEdge barEdge = MorvelEdge::Bottom;
};

ButtonAppearance windowButtonAppearance(const WindowButtonState& state);
/// The side along which the underline of the active style runs, the one that faces the screen edge; absent without.
std::optional<ui::Edge> activeUnderline(const WindowButtonState& state);

/// Of grouped and pinned buttons, which have no active style.
ButtonAppearance appButtonAppearance(bool isHovered, bool hasBorders);
/// Folders never carry the running dot, even where an application of that path runs.
bool showsRunningDot(bool isApplication, bool isRunning);

/// Of the Start and Apple-menu buttons.
ButtonAppearance startButtonAppearance(bool isHovered);
/// Of a row in the group popover.
ButtonAppearance rowAppearance(bool isHovered);

void apply(const ButtonAppearance& appearance, ui::View& view);

}  // namespace morvel
