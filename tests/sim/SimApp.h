// A simulated application: what its user and its own code do, and how it reacts to being asked.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Workspace.h"
#include "sim/Journal.h"
#include "sim/SimWindow.h"

namespace morvel::sim {

class Desktop;

class SimApp {
public:
    /// Made by `Desktop::launch`.
    SimApp(Desktop& desktop, RunningApplication record);

    ProcessID pid() const { return record_.pid; }
    const RunningApplication& record() const { return record_; }
    bool isRunning() const { return running_; }
    bool isFrontmost() const;
    /// Every window that it ever opened, in that order.
    const std::vector<std::unique_ptr<SimWindow>>& windows() const { return windows_; }

    // --- What its user and its own code do ---
    SimWindow& open(const WindowSpec& spec = {});
    /// Gives it a menu bar with a File menu of one item with a Command shortcut, in place of the one it had.
    void setMenuItem(const std::string& title, const std::string& character, std::function<AXError()> pressed);
    void activate();
    void quit();
    /// Ends without any notice, as a crash that the system overlooks.
    void killSilently();

    // --- Faults ---
    void hang();
    void recover();
    /// Refuses the next `times` subscriptions of the notification.
    void refuseSubscriptions(std::string_view notification, int times);
    bool ignoresQuit = false;  ///< asks its user first, who never answers

private:
    friend class SimWindow;
    friend class Desktop;
    void setFocused(SimWindow* window);
    void updateWindowList();
    /// Its elements and windows are gone from the system.
    void vanish();

    Desktop& desktop_;
    RunningApplication record_;
    bool running_ = true;
    std::vector<std::unique_ptr<SimWindow>> windows_;
    SimWindow* focused_ = nullptr;  // one of ours
};

}  // namespace morvel::sim
