// One setting of those that a desktop publishes, read out of the published form: a list of names, types and values.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace morvel::x11 {

/// The whole number under a name in the settings' published form; nothing when it is not there, is of another type, or
/// what was published is cut off or no such thing.
std::optional<int32_t> xSettingsNumber(std::string_view published, std::string_view name);

/// The text under a name, likewise.
std::optional<std::string> xSettingsText(std::string_view published, std::string_view name);

}  // namespace morvel::x11
