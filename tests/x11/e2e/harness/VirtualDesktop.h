// A whole private desktop: X server, window manager, a hand on the mouse, and programs to run on it.
#pragma once

#include "harness/Client.h"
#include "harness/Desktop.h"
#include "harness/Pointer.h"
#include "harness/Program.h"
#include "harness/Screenshot.h"
#include "harness/WindowManager.h"
#include "harness/XServer.h"

namespace morvel::e2e {

struct VirtualDesktop {
    explicit VirtualDesktop(int width = 1280, int height = 800)
        : server(width, height), desktop(server.display()), manager(server, desktop), pointer(desktop) {}

    /// Starts a program on this desktop.
    Program run(const std::vector<std::string>& arguments) {
        return Program(arguments, server.environment(), {.output = server.home() / "programs.log"});
    }
    Screenshot shoot() { return Screenshot::ofRoot(desktop.connection()); }

    XServer server;
    Desktop desktop;
    WindowManager manager;
    Pointer pointer;
};

}  // namespace morvel::e2e
