// The few system symbols that the program shows, drawn here since this system has none under these names.
#pragma once

#include <memory>
#include <string_view>

#include "Platform/Linux/Icons/XImage.h"

namespace morvel::x11 {

/// A mask in the current tint, as many points wide and high as `pointSize`; null for a name without a drawing.
std::shared_ptr<const XImage> drawSymbol(std::string_view name, double pointSize);

}  // namespace morvel::x11
