// The texts that a window's button shows.
#pragma once

#include <string>

#include "WindowSource/WindowSnapshot.h"

namespace morvel {

struct ButtonTexts {
    std::string label;
    std::string tooltip;
    double alpha = 1;  ///< of the whole button: placeholders of windowless applications are dimmed
};

ButtonTexts buttonTexts(const WindowSnapshot& window);

/// What an assistive program reads out for an application's button that stands for `count` windows.
std::string groupAccessibilityLabel(const std::string& appName, size_t count);

}  // namespace morvel
