// The shared, observable record of all tracked windows. It knows nothing of the system: events come in, maps go out.
#pragma once

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "Util/Published.h"
#include "Util/WindowIDMint.h"
#include "WindowSource/WindowEvent.h"
#include "WindowSource/WindowSnapshot.h"

namespace morvel {

/// No order; whoever shows windows decides theirs.
using WindowMap = std::unordered_map<WindowID, WindowSnapshot>;
/// An immutable state of the map. Keeping one costs a copy of the map at the next event, dropping it saves that.
using WindowMapRef = std::shared_ptr<const WindowMap>;

/// Main thread only.
class WindowStore {
public:
    /// `mint` outlives the store. `isProcessAlive` is the liveness probe (`killProbe` in the program).
    WindowStore(WindowIDMint& mint, std::function<bool(ProcessID)> isProcessAlive);

    /// The only way to change anything below. One publication per event that changes something.
    void apply(const WindowEvent& event);

    /// Published after each event that changed a record. Never null.
    const Published<WindowMapRef>& windows() const { return windows_; }
    /// Published when the focus moves; only real changes.
    const Published<std::optional<WindowID>>& focusedID() const { return focusedID_; }

    /// All records of a process, placeholders included, in no order.
    std::vector<WindowSnapshot> snapshot(ProcessID pid) const;

    bool isProcessAlive(ProcessID pid) const { return isProcessAlive_(pid); }

private:
    WindowIDMint& mint_;
    std::function<bool(ProcessID)> isProcessAlive_;
    Published<WindowMapRef> windows_{std::make_shared<const WindowMap>()};
    Published<std::optional<WindowID>> focusedID_;
};

}  // namespace morvel
