// Puts what the running strip shows in its lasting order, from one rebuild to the next.
#pragma once

#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "Bar/Layout/RunningZoneLayout.h"

namespace morvel {

/// What the running strip shows, from its leading end: the groups, if it is grouped, and then single buttons (all
/// windows and placeholders when flat, the placeholders alone when grouped).
struct RunningStripContent {
    bool isGrouped = false;
    std::vector<RunningZoneLayout::Group> groups;
    std::vector<WindowSnapshot> buttons;
};

class RunningStripArranger {
public:
    /// `decision` holds the windows, `windowless` the placeholders in any order.
    RunningStripContent arrange(RunningZoneLayout::Result decision, std::vector<WindowSnapshot> windowless);

    /// Puts a window at a position of the order, counted without it and bounded by its length.
    void moveRunningWindow(const WindowID& id, size_t position);
    /// A window that is on its way here is to stand before what now has this place in the strip, once it has come.
    /// Only the last one is remembered: a person drops one at a time.
    void expectArrival(const WindowID& id, size_t slot);

    /// Goes on from another arranger's order, as of a bar that is made anew.
    void adopt(const RunningStripArranger& former) { *this = former; }

private:
    struct Arrival {
        WindowID id;
        std::optional<WindowID> before;  // nothing: at the end
    };

    enum class Strip { Flat, Grouped };
    /// What was last arranged and how, so that a changed title costs no ordering.
    struct Arranged {
        Strip strip = Strip::Flat;
        std::vector<std::pair<WindowID, ProcessID>> windows;  // as they were given
        std::vector<size_t> places;                           // in `windows`, from the leading end
    };

    RunningStripContent arrangeFlat(std::vector<WindowSnapshot> windows);
    RunningStripContent arrangeGrouped(std::vector<RunningZoneLayout::Group> groups,
                                       std::vector<WindowSnapshot> windowless);
    std::vector<WindowSnapshot> inOrder(std::vector<WindowSnapshot> windows, Strip strip);
    bool isAsLastTime(const std::vector<WindowSnapshot>& windows, Strip strip) const;
    void arrangeAnew(const std::vector<WindowSnapshot>& windows, Strip strip);
    /// The next order of the windows.
    std::vector<WindowID> nextOrder(const std::vector<WindowSnapshot>& windows) const;

    std::vector<WindowID> runningWindowOrder_;                   // that the flat buttons were last in
    std::unordered_map<WindowID, ProcessID> runningWindowPIDs_;  // of the windows in the order
    std::optional<Arranged> arranged_;                           // nothing: the order was changed since
    std::optional<Arrival> arrival_;
    std::vector<WindowID> slots_;  // what stands in the strip; of a group, its first window
};

}  // namespace morvel
