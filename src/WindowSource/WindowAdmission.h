// Which of the elements that applications show as windows count as windows for the bar.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Util/Geometry.h"
#include "Util/Identity.h"

namespace morvel {

/// What could be learned of one element; absent is unreadable.
struct WindowAttributes {
    std::optional<std::string> role;
    std::optional<std::string> subrole;
    std::optional<std::string> title;
    std::optional<Rect<AXSpace>> frame;
    std::optional<bool> isFullscreen;
    bool hasCloseButton = false;
    std::optional<WindowNumber> number;
    std::optional<int> layer;
};

/// Nothing for a window that counts, and else the reason why it does not, for people who miss a window.
std::optional<std::string_view> refusalReason(const WindowAttributes& window);

}  // namespace morvel
