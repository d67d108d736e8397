// The program's own bundle identifier, from which the names of its private things are made.
#pragma once

#include <string_view>

namespace morvel {

inline constexpr std::string_view kBundleIdentifier = "app.morvel.Morvel";

}  // namespace morvel
