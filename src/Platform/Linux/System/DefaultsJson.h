// Stored values as JSON and back, each with its type.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>

#include "Platform/UserDefaults.h"

namespace morvel::x11 {

/// JSON has no dates, no data and no numbers that are not finite: such a value is an object with the single key
/// "$date" (seconds since 1970), "$data" (base64) or "$real" ("nan", "inf", "-inf"); a dictionary that looks like one
/// of these is wrapped in "$dictionary". A floating-point number always has a fraction or an exponent.
nlohmann::json toJson(const DefaultsValue& value);

/// Nothing for what `toJson` never writes: null, tagged objects with a wrong content, whole numbers that do not fit
/// into 64 bits, and whatever is nested deeper than anything sensible.
std::optional<DefaultsValue> fromJson(const nlohmann::json& json);

}  // namespace morvel::x11
