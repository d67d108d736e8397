// What the program changes in the system's own settings, with the person's consent: the Dock is hidden and shrunk, and
// macOS no longer switches Spaces by itself. Quitting undoes it.
#pragma once

#include <functional>
#include <string>

#include "Platform/Log.h"
#include "Platform/ShellCommands.h"
#include "Platform/UserDefaults.h"
#include "Settings/SettingsStore.h"
#include "UI/Toolkit.h"
#include "Util/Lifetime.h"

namespace morvel {

/// Main thread only. The flags in the settings say what the person wants; this makes the system follow them.
class SystemChanges {
public:
    /// What it works with; all outlive it.
    struct System {
        ShellCommands& shell;
        UserDefaults& defaults;
        ui::Toolkit& toolkit;
        Log& log;
        std::function<void()> changed;  ///< after a change was made or undone because a flag was set
    };

    SystemChanges(System system, SettingsStore& settings) : system_(std::move(system)), settings_(settings) {}
    SystemChanges(const SystemChanges&) = delete;
    SystemChanges& operator=(const SystemChanges&) = delete;

    /// From now on follows the flags.
    void start();
    /// Makes the changes that were agreed to at an earlier launch, and asks about those that were not talked about yet,
    /// one after the other; then calls `done`. Asks about undoing first when the program did not end properly.
    void makeOffers(std::function<void()> done);
    /// Undoes everything for the time that the program does not run. The flags stay.
    void revert();

private:
    struct Change;
    static const Change& dock();
    static const Change& spaces();

    void follow(const Change& change);
    void offer(const Change& change, std::function<void()> next);
    void askWhetherToUndo(std::function<void()> next);
    void ask(ui::Alert alert, std::function<void(std::optional<size_t>)> answered);
    /// Makes or undoes the change, as its flag says.
    void makeFollow(const Change& change);
    void run(const std::string& line);
    bool isAnyWanted() const;

    System system_;
    SettingsStore& settings_;
    Subscriptions subscriptions_;
    Lifetime lifetime_;
};

}  // namespace morvel
