#include "Bar/Buttons/AppCommands.h"

namespace morvel {

namespace {

using namespace std::chrono_literals;

/// Time enough to close windows and save state, short enough that a person who chose Quit sees it happen.
constexpr Duration kPatience = 2500ms;

}  // namespace

void AppCommands::quit(ProcessID pid) {
    const auto application = workspace_.runningApplication(pid);
    if (!application) return;
    const uint64_t serial = ++lastQuit_;
    pendingQuits_[serial] = mainLoop_.after(kPatience, [this, serial, pid, instance = application->instance] {
        forceIfStillRunning(pid, instance);
        pendingQuits_.erase(serial);
    });
    workspace_.terminate(pid);
}

void AppCommands::forceQuit(ProcessID pid) {
    workspace_.forceTerminate(pid);
}

void AppCommands::showInFinder(const std::optional<std::string>& bundleID) {
    if (!bundleID) return;
    if (const auto path = workspace_.locate(*bundleID)) workspace_.revealInFileManager(*path);
}

AppActions AppCommands::actions() {
    return {.isRunning = [this](ProcessID pid) { return isRunning(pid); },
            .quit = [this](ProcessID pid) { quit(pid); },
            .forceQuit = [this](ProcessID pid) { forceQuit(pid); },
            .showInFinder = [this](const std::optional<std::string>& bundleID) { showInFinder(bundleID); },
            .showFile = [this](const std::string& path) { showFile(path); }};
}

void AppCommands::forceIfStillRunning(ProcessID pid, uint64_t instance) {
    const auto application = workspace_.runningApplication(pid);
    if (application && application->instance == instance) workspace_.forceTerminate(pid);
}

}  // namespace morvel
