// Running applications and screens as NSWorkspace and NSScreen show them, scripted by tests. Each change posts the
// notification that the system posts for it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Platform/Mac/apple/AppKit/NSWorkspace.h"
#include "SystemObjects.h"

namespace morvel::mac::checked {

class WorkspaceWorld {
public:
    static WorkspaceWorld& process();
    void reset() { *this = WorkspaceWorld(); }

    struct Application {
        std::int32_t pid = 0;
        std::string bundleIdentifier;  // empty: it has none
        std::string name;
        NSInteger activationPolicy = 0;  // regular
        double launched = 0;             // seconds since 1970; zero: it was not launched as an application
    };
    NSRunningApplication launch(const Application& application);
    /// It is gone from the list before the notice comes.
    void quit(std::int32_t pid);
    void activate(std::int32_t pid);
    void spaceChanged();

    struct Screen {
        std::uint32_t display = 1;
        std::string name;
        CGRect frame = {};
        CGRect visibleFrame = {};
        CGRect auxiliaryTopLeft = {};  // empty: it has no camera housing
        CGRect auxiliaryTopRight = {};
    };
    /// All screens, the first one with the menu bar.
    void setScreens(const std::vector<Screen>& screens);

    // For the handlers.
    Elements runningApplications;
    Elements screens;
    std::int32_t menuBarOwner = 0;  // the regular application that was activated last
    NSRunningApplication withPid(std::int32_t pid) const;
    NSRunningApplication frontmost() const;
};

inline WorkspaceWorld& workspace() {
    return WorkspaceWorld::process();
}

}  // namespace morvel::mac::checked
