// Lower case for searching: independent of the locale, the same on every platform.
#pragma once

#include <string>
#include <string_view>

namespace morvel {

/// Of UTF-8 text, letter by letter, for the Latin, Greek, Cyrillic and Armenian scripts; others in daily use have no
/// case. What is not UTF-8 is kept as it is.
std::string lowerCased(std::string_view text);

}  // namespace morvel
