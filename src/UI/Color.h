// Colours by their role. A host resolves a role under the appearance in force when it draws, so a change of light,
// dark or accent repaints without anything being rebuilt.
#pragma once

namespace morvel::ui {

/// sRGB, each component 0…1, not premultiplied.
struct RGBA {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    bool operator==(const RGBA&) const = default;
};

enum class ColorRole {
    Clear,
    Label,
    SecondaryLabel,
    ControlAccent,
    WindowBackground,
    Separator,
    SystemRed,
    White,
    Custom,  ///< the colour's own `rgba`
};

struct Color {
    ColorRole role = ColorRole::Clear;
    double alpha = 1;  ///< multiplies the role's own
    RGBA rgba = {};    ///< meaningful for Custom alone

    Color withAlpha(double a) const { return {role, a, rgba}; }
    bool isClear() const { return role == ColorRole::Clear || alpha <= 0; }
    bool operator==(const Color&) const = default;
};

inline constexpr Color kClear{ColorRole::Clear};
inline constexpr Color kLabelColor{ColorRole::Label};
inline constexpr Color kSecondaryLabelColor{ColorRole::SecondaryLabel};
inline constexpr Color kControlAccentColor{ColorRole::ControlAccent};
inline constexpr Color kWindowBackgroundColor{ColorRole::WindowBackground};
inline constexpr Color kSeparatorColor{ColorRole::Separator};
inline constexpr Color kSystemRedColor{ColorRole::SystemRed};
inline constexpr Color kWhiteColor{ColorRole::White};
inline Color customColor(RGBA rgba) {
    return {ColorRole::Custom, 1, rgba};
}

}  // namespace morvel::ui
