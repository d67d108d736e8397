// The colours behind the roles, under the appearance in force.
#pragma once

#include <optional>
#include <string_view>

#include "UI/Color.h"
#include "UI/VisualEffectView.h"

namespace morvel::x11 {

enum class Appearance { Light, Dark };

struct Palette {
    Appearance appearance = Appearance::Light;
    ui::RGBA accent{0x0A / 255.0, 0x84 / 255.0, 0xFF / 255.0, 1};

    ui::RGBA resolve(const ui::Color& color) const;

    /// What a visual effect view shows: translucent where a compositing manager blends windows, solid elsewhere.
    ui::RGBA material(ui::Material material, bool isComposited) const;
    /// The body and the hairline of menus, popovers and tooltips.
    ui::RGBA bubble(bool isComposited) const;
    ui::RGBA bubbleBorder() const;

    /// What is behind the text of a text field.
    ui::RGBA textField() const;

    bool operator==(const Palette&) const = default;

private:
    bool isDark() const { return appearance == Appearance::Dark; }
};

/// By the name of a theme; themes say so at its end.
Appearance appearanceOfTheme(std::string_view name);

/// What GTK_THEME names, which is how a person asks single programs for a theme. Nothing: it names none.
std::optional<Appearance> appearanceFromEnvironment();

}  // namespace morvel::x11
