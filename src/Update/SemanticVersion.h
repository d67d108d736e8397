// A release's version: three numbers, compared as numbers.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace morvel {

/// The whole text as a decimal integer with an optional sign; nothing for any other text and beyond 64 bits.
std::optional<int64_t> parseInteger(std::string_view text);

/// No part is negative. There is no pre-release or build part.
struct SemanticVersion {
    int64_t major = 0;
    int64_t minor = 0;
    int64_t patch = 0;

    /// Exactly three integers between two dots; leading zeros and a plus sign are accepted.
    static std::optional<SemanticVersion> parse(std::string_view text);

    /// "1.4.0"
    std::string description() const;

    auto operator<=>(const SemanticVersion&) const = default;
};

}  // namespace morvel
