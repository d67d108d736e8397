// What the menus of the bar's buttons can do to other applications, as functions that a menu can keep.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Util/Identity.h"

namespace morvel {

/// All are set.
struct AppActions {
    std::function<bool(ProcessID)> isRunning;
    /// Asks the application to quit and makes it, if it has not within a short while.
    std::function<void(ProcessID)> quit;
    std::function<void(ProcessID)> forceQuit;
    /// Nothing happens without a bundle identifier, or where its application cannot be located.
    std::function<void(const std::optional<std::string>& bundleID)> showInFinder;
    /// Shows the file or folder, by its absolute path.
    std::function<void(const std::string& path)> showFile;
};

}  // namespace morvel
