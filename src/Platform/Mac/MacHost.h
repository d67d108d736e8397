// The whole program on macOS: the application object, the host's seams, and the bar's application on top of them.
#pragma once

#include "App/AppDelegate.h"
#include "Platform/Mac/MacSystem.h"
#include "Platform/Mac/UI/MacToolkit.h"
#include "Platform/Mac/apple/AppKit/NSApplication.h"

namespace morvel::mac {

/// Main thread only, one per process, made before anything else of AppKit's. It must live as long as the process:
/// AppKit keeps no reference to the delegate, and quitting ends the process from inside `run`.
class MacHost {
public:
    MacHost();
    ~MacHost();
    MacHost(const MacHost&) = delete;
    MacHost& operator=(const MacHost&) = delete;

    void run() { application_.run(); }
    morvel::AppDelegate& appDelegate() { return appDelegate_; }

private:
    NSApplication application_;
    MacSystem system_;
    MacToolkit toolkit_;
    morvel::AppDelegate appDelegate_;
    NSObject delegate_;
};

}  // namespace morvel::mac
