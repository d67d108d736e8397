// A small, predictable window manager for the private desktop.
#pragma once

#include <optional>

#include "harness/Desktop.h"
#include "harness/Program.h"
#include "harness/XServer.h"

namespace morvel::e2e {

/// Openbox with two workspaces, click to focus and no key or mouse bindings of the desktop's own.
class WindowManager {
public:
    /// Returns when it manages windows. Throws std::runtime_error when it does not come up.
    WindowManager(XServer& server, Desktop& desktop);

    void stop();
    void start();

private:
    XServer& server_;  // both outlive us
    Desktop& desktop_;
    std::optional<Program> program_;
};

}  // namespace morvel::e2e
