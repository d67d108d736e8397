// Puts what the running strip shows in its lasting order, from one rebuild to the next.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>
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

    /// The order the flat buttons were last in.
    const std::vector<WindowID>& runningWindowOrder() const { return runningWindowOrder_; }

private:
    RunningStripContent arrangeFlat(std::vector<WindowSnapshot> windows);
    bool areInOrder(const std::vector<WindowSnapshot>& windows) const;
    void updateOrder(const std::vector<WindowSnapshot>& windows);

    std::vector<WindowID> runningWindowOrder_;
    std::unordered_map<WindowID, ProcessID> runningWindowPIDs_;  // of the windows in the order
    std::unordered_map<WindowID, size_t> places_;                // in the order
};

}  // namespace morvel
