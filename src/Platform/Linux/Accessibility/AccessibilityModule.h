// Brings the accessibility module into the process: a library of its own, for those who need it.
#pragma once

#include <memory>
#include <string>

#include "Platform/Linux/Accessibility/AccessibilityBridge.h"
#include "Platform/Log.h"

namespace morvel::x11 {

/// Looks next to the executable and then where the program's libraries are installed. Null, with a line in the log,
/// when the module is missing, of another version, or cannot reach the bus. It never leaves the process again: what it
/// registers with GLib cannot be taken back.
std::unique_ptr<AccessibilityBridge> loadAccessibilityModule(const std::string& busAddress, Log& log);

}  // namespace morvel::x11
