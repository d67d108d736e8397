// A whole desktop to test against: displays, Spaces, applications and windows that behave and misbehave as real ones
// do, a clock that a test moves, and a pointer. Owns everything that a host would offer.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <vector>

#include "Platform/Platform.h"
#include "sim/FakeDefaults.h"
#include "sim/FakeMainLoop.h"
#include "sim/Journal.h"
#include "sim/SimAccessibility.h"
#include "sim/SimApp.h"
#include "sim/SimIcons.h"
#include "sim/SimInstalledApplications.h"
#include "sim/SimLog.h"
#include "sim/SimPlayers.h"
#include "sim/SimScreens.h"
#include "sim/SimShell.h"
#include "sim/SimToolkit.h"
#include "sim/SimWeb.h"
#include "sim/SimWindow.h"
#include "sim/SimWindowServer.h"
#include "sim/SimWorkQueue.h"
#include "sim/SimWorkspace.h"

namespace morvel::sim {

using namespace std::chrono_literals;

struct LaunchOptions {
    std::optional<std::string> bundleID = {};  ///< by default made of the name: "com.example.editor"
    bool hasBundle = true;                     ///< false: a bare program without a bundle identifier
    ActivationPolicy policy = ActivationPolicy::Regular;
    std::optional<ProcessID> pid = {};  ///< a number to reuse; by default the next one
};

/// What a person or a program does sends the notices that a real system would send, in a later turn of the main loop.
/// Only `run` and `settle` let them arrive.
class Desktop {
public:
    explicit Desktop(const std::vector<DisplaySpec>& displays = oneDisplay(1440, 900));
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    ~Desktop();

    Platform& platform() { return platform_; }
    FakeMainLoop& mainLoop() { return mainLoop_; }
    SimLog& log() { return log_; }
    SimAccessibility& accessibility() { return accessibility_; }
    SimWindowServer& windowServer() { return windowServer_; }
    SimWorkspace& workspace() { return workspace_; }
    SimScreens& screens() { return screens_; }
    FakeDefaults& defaults() { return defaults_; }
    SimIcons& icons() { return icons_; }
    SimToolkit& toolkit() { return toolkit_; }
    SimLoginItem& loginItem() { return loginItem_; }
    /// From now on it has a Dock, whose settings are changed by commands. For programs that start afterwards.
    SimShell& addDock() {
        platform_.shellCommands = &shell_;
        return shell_;
    }
    SimWorkQueues& workQueues() { return workQueues_; }
    SimInstalledApplications& installedApplications() { return *installedApplications_; }
    SimPlayers& players() { return *players_; }
    SimWeb& web() { return web_; }
    /// The time of day; the clock of the main loop on top of it.
    Date now() const { return Date(std::chrono::seconds(1700000000)) + mainLoop_.now().time_since_epoch(); }
    Journal& journal() { return journal_; }

    void run(Duration time) { mainLoop_.advance(time); }
    void settle() { mainLoop_.settle(); }

    // --- Applications. References stay good for the desktop's life, also after the application has ended. ---
    /// Starts it in the background and without windows.
    SimApp& launch(const std::string& name, const LaunchOptions& options = {});
    /// How often the program under test asked to be ended.
    int terminations() const { return terminations_; }
    /// The newest one with the process number; null for none that runs.
    SimApp* app(ProcessID pid);
    /// How often the window's position was written by the program under test.
    long frameWrites(const SimWindow& window) const { return journal_.count(window.element(), "AXPosition="); }

    // --- Displays and Spaces ---
    void plug(const DisplaySpec& display);
    /// The system moves the display's windows to the first one that is left.
    void unplug(DisplayID display);
    /// Replaces all displays at once, as waking up does.
    void rearrange(const std::vector<DisplaySpec>& displays);
    /// A new user Space (or with type 4 a full-screen one) at the end of the display's list.
    SpaceID addSpace(DisplayID display, int64_t type = 0);
    void switchSpace(DisplayID display, SpaceID space);
    std::optional<SpaceID> currentSpace(DisplayID display);

    // --- The pointer, followed by what it caused ---
    void click(ui::View& view);
    void rightClick(ui::View& view);
    void choose(const std::vector<std::string>& path);

private:
    friend class SimApp;
    friend class SimWindow;
    AXError written(ElementID id, std::string_view name, const AXValue& value);
    AXError performed(ElementID id, std::string_view action);
    SimWindow* windowOf(ElementID id);
    std::optional<DisplayID> displayAt(Point<AXSpace> point) const;
    /// An application that is not running, or is started once more, comes with a window.
    void opened(const std::string& path, const OpenApplication& how);
    void openedInFinder(const std::string& path);
    void addDisplaySpaces(DisplayID display);
    void rescueWindows();

    FakeMainLoop mainLoop_;
    Journal journal_;
    SimLog log_;
    SimAccessibility accessibility_{mainLoop_, journal_};
    SimWindowServer windowServer_{journal_};
    SimWorkspace workspace_{journal_};
    SimScreens screens_;
    FakeDefaults defaults_;
    SimIcons icons_;
    SimToolkit toolkit_{mainLoop_};
    SimWorkQueues workQueues_{mainLoop_};
    std::shared_ptr<SimInstalledApplications> installedApplications_ = std::make_shared<SimInstalledApplications>();
    std::shared_ptr<SimPlayers> players_ = std::make_shared<SimPlayers>(workspace_);
    SimWeb web_{mainLoop_};
    SimLoginItem loginItem_;
    SimShell shell_;
    Platform platform_;
    std::vector<std::unique_ptr<SimApp>> apps_;
    std::map<ElementID, SimWindow*> windows_;       // by window element
    std::map<ElementID, SimWindow*> closeButtons_;  // by button element
    std::map<ElementID, std::function<AXError()>> menuItems_;
    int32_t lastPID_ = 100;
    uint64_t lastInstance_ = 0;
    uint32_t lastNumber_ = 10;
    uint64_t lastSpace_ = 0;
    int terminations_ = 0;
};

}  // namespace morvel::sim
