// When a bar brings its running strip in line with the windows, and how thoroughly.
#pragma once

#include <functional>
#include <unordered_set>

#include "Platform/MainLoop.h"
#include "Util/Lifetime.h"
#include "WindowSource/WindowStore.h"

namespace morvel {

/// Each does more than the one before. Titles: only windows' titles have changed.
enum class Rebuild { None, Titles, IfNeeded, Forced };

/// Main thread only. However much happens in one turn of the main loop, the bar acts once, in a later turn.
class RebuildSchedule {
public:
    /// What the bar does. All are set.
    struct Actions {
        /// Whether a window's title decides what fits on the bar, so that a new one is a change like any other.
        std::function<bool()> doTitlesDecideWidths;
        /// Shows the new title of one window.
        std::function<void(const WindowSnapshot&)> retitle;
        std::function<void(Rebuild)> rebuild;  ///< IfNeeded or Forced
    };

    /// Follows the store, which outlives this as the loop does.
    RebuildSchedule(MainLoop& mainLoop, const WindowStore& store, Actions actions);
    RebuildSchedule(const RebuildSchedule&) = delete;
    RebuildSchedule& operator=(const RebuildSchedule&) = delete;

    void schedule(Rebuild rebuild);

private:
    void noteEvent(const WindowEvent& event);
    void windowsPublished();
    void run(Rebuild due);
    void showTitles();

    MainLoop& mainLoop_;
    const WindowStore& store_;
    Actions actions_;
    Rebuild scheduled_ = Rebuild::None;      // for a later turn, which is posted unless None
    std::unordered_set<WindowID> retitled_;  // since the last turn in which something was done
    bool isMoreThanRetitled_ = false;        // since then something else happened, too
    Timer wholeLook_;                        // what only titles have deferred
    Subscription events_;
    Subscription windows_;
    Lifetime lifetime_;
};

}  // namespace morvel
