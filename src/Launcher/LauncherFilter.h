// Which applications the launcher lists for what was typed, and which of them was probably meant.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvel::LauncherFilter {

/// The indices of the names that contain the query, in their order; all for an empty query. Names and query are
/// lower-cased already. Nothing is trimmed: a space only finds names that contain one.
std::vector<size_t> filtered(std::string_view query, const std::vector<std::string>& names);

/// The place among `kept`, which `filtered` answered, of the name that fits best: the first that starts with the query,
/// else the first in which a word does, else the first. Nothing was meant yet while the query is empty.
std::optional<size_t> bestMatch(std::string_view query, const std::vector<std::string>& names,
                                const std::vector<size_t>& kept);

}  // namespace morvel::LauncherFilter
