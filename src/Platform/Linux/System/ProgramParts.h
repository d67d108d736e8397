// The files that belong to the bar's program beside the program itself.
#pragma once

#include <filesystem>

namespace morvel::x11 {

/// Looks next to the executable and then where the program's parts are installed. Empty when it is in neither.
std::filesystem::path programPart(const char* fileName);

}  // namespace morvel::x11
