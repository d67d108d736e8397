// What the program knows of one window, or of an application that runs without any.
#pragma once

#include <optional>
#include <string>

#include "Util/Geometry.h"
#include "Util/Identity.h"

namespace morvel {

struct WindowSnapshot {
    WindowID id;
    ProcessID pid;
    std::optional<WindowNumber> cgWindowID;  ///< absent for placeholders and where the server's number is not known
    std::optional<std::string> bundleID;
    std::string appName;
    std::string title;  ///< empty when the window has none
    Rect<AXSpace> frame;
    bool isFullscreen = false;
    bool isWindowless = false;  ///< a placeholder for a running application without windows

    /// Identity alone. Whoever must notice a new title or frame compares those.
    bool operator==(const WindowSnapshot& other) const { return id == other.id; }
};

}  // namespace morvel
