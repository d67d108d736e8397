// Quits other applications, first politely and then not, and shows them in the file manager.
#pragma once

#include <cstdint>
#include <unordered_map>

#include "Bar/Buttons/AppActions.h"
#include "Platform/MainLoop.h"
#include "Platform/Workspace.h"

namespace morvel {

/// Main thread only. One for the whole program, so that a quit that was asked for runs its course although the button
/// that asked is gone; what is still pending when this is destroyed is dropped.
class AppCommands {
public:
    /// Both outlive this.
    AppCommands(Workspace& workspace, MainLoop& mainLoop) : workspace_(workspace), mainLoop_(mainLoop) {}
    AppCommands(const AppCommands&) = delete;
    AppCommands& operator=(const AppCommands&) = delete;

    bool isRunning(ProcessID pid) { return workspace_.runningApplication(pid).has_value(); }
    /// Asks the application to quit, and ends it 2.5 seconds later if it still runs. Another process that got the same
    /// number in the meantime is left alone.
    void quit(ProcessID pid);
    void forceQuit(ProcessID pid);
    void showInFinder(const std::optional<std::string>& bundleID);
    void showFile(const std::string& path) { workspace_.revealInFileManager(path); }

    /// The above as functions; this outlives them.
    AppActions actions();

private:
    void forceIfStillRunning(ProcessID pid, uint64_t instance);

    Workspace& workspace_;
    MainLoop& mainLoop_;
    uint64_t lastQuit_ = 0;
    std::unordered_map<uint64_t, Timer> pendingQuits_;  // by serial: asking twice does not postpone the end
};

}  // namespace morvel
