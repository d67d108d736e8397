// How wide a window's button is, and the measures that the buttons share. All in points.
#pragma once

#include <optional>

#include "UI/Font.h"

namespace morvel::ButtonGeometry {

inline constexpr double kHeight = 32;
inline constexpr double kCornerRadius = 4;
inline constexpr double kIconSize = 18;
inline constexpr ui::Font kTitleFont{.size = 12};

/// Of the underline that one of the active styles draws.
inline constexpr double kUnderlineHeight = 2;

/// The width that the button must have; absent where it follows its title. `provided` is the width that the settings
/// give every button, absent in free mode.
std::optional<double> requiredWidth(bool isIconOnly, std::optional<double> provided);

/// The width that the button wants when nothing is required: the title's width and its surroundings, within bounds.
double titleDrivenWidth(double labelWidth);

}  // namespace morvel::ButtonGeometry
