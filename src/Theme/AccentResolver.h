// The colour of active buttons, badges and running dots.
#pragma once

#include <optional>
#include <string_view>

#include "Settings/SettingsStore.h"
#include "UI/Color.h"

namespace morvel::AccentResolver {

/// The person's own colour if one is chosen and readable, else the system's accent.
ui::Color resolved(const SettingsStore& settings);

/// Eight hexadecimal digits, RRGGBBAA, in either case; anything else is nothing.
std::optional<ui::RGBA> parse(std::string_view hex);

}  // namespace morvel::AccentResolver
