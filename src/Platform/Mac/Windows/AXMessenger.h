// The one way in which this host asks other processes anything: with a time-out, and not at all while one hangs.
#pragma once

#include "Platform/Accessibility.h"
#include "Platform/Mac/Windows/UnresponsiveProcesses.h"
#include "Platform/Mac/apple/Accessibility.h"
#include "Platform/MainLoop.h"

namespace morvel::mac {

/// Main thread only.
class AXMessenger {
public:
    /// Bounds every wait of this process from here on. The main loop outlives this.
    explicit AXMessenger(MainLoop& mainLoop);

    MainLoop& mainLoop() { return mainLoop_; }

    /// The process's application element; asks nobody.
    CFRef<AXUIElementRef> application(ProcessID pid) const;

    /// Runs `call`, which asks the process one thing and returns the system's error, and learns from the answer. A
    /// process that has hung is probed first; if it still hangs, or was probed just now, `call` does not run and the
    /// answer is `CannotComplete`.
    template <typename Call>
    morvel::AXError ask(ProcessID pid, const Call& call) {
        return mayAsk(pid) ? learn(pid, call()) : morvel::AXError::CannotComplete;
    }

private:
    bool mayAsk(ProcessID pid);
    morvel::AXError learn(ProcessID pid, AXError error);

    MainLoop& mainLoop_;
    UnresponsiveProcesses unresponsive_;
};

}  // namespace morvel::mac
