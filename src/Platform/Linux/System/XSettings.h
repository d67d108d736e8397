// The settings that a desktop publishes to all programs on the X server, read when they are asked for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Platform/Linux/System/XConnection.h"

namespace morvel::x11 {

/// The whole number under a name in the settings' published form; nothing when it is not there, is of another type, or
/// what was published is cut off or no such thing.
std::optional<int32_t> xSettingsNumber(std::string_view published, std::string_view name);

/// The text under a name, likewise.
std::optional<std::string> xSettingsText(std::string_view published, std::string_view name);

/// Whether the desktop's settings say that programs show no animations. False where nobody publishes settings. Waits
/// for the server.
bool animationsAreOff(XConnection& connection);

/// What the theme of the desktop's programs is called. Nothing where nobody publishes settings. Waits for the server.
std::optional<std::string> publishedTheme(XConnection& connection);

}  // namespace morvel::x11
