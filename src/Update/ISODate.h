// Moments as the update document writes them: "2024-05-01T12:00:00Z".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Platform/UserDefaults.h"

namespace morvel {

/// Date, time to the second, and "Z" or an offset such as "+01:00". Nothing for any other form, fractions of a second
/// included, and for a day or time that there is not.
std::optional<Date> parseISODate(std::string_view text);

/// In UTC; a fraction of a second is dropped. Years from 0 to 9999.
std::string formatISODate(Date date);

}  // namespace morvel
