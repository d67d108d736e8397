// The macOS host as one piece: the application object, every seam, and the running of an application on top of them.
#pragma once

#include "Platform/Mac/AppDelegate.h"
#include "Platform/Mac/MacSystem.h"
#include "Platform/Mac/UI/MacToolkit.h"
#include "Platform/Mac/apple/AppKit/NSApplication.h"
#include "Platform/Platform.h"

namespace morvel::mac {

/// Main thread only, one per process, made before anything else of AppKit's. It must live as long as the process:
/// AppKit keeps no reference to the delegate, and quitting ends the process from inside `run`.
class MacHost {
public:
    MacHost() : application_(NSApplication::shared()), toolkit_(system_.mainLoop()) {}
    ~MacHost() { application_.setDelegate(nullptr); }
    MacHost(const MacHost&) = delete;
    MacHost& operator=(const MacHost&) = delete;

    /// What an application is made with; good as long as the host.
    Platform platform();
    /// Runs the application until it ends.
    void run(AppDelegate::Callbacks application);

private:
    NSApplication application_;
    MacSystem system_;
    MacToolkit toolkit_;
    NSObject delegate_;
    Subscription requestsToEnd_;
    Subscription furtherInstances_;
};

}  // namespace morvel::mac
