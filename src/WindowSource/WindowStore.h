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

    /// Hears of each event before it is applied, whether it will change anything or not. What shows windows follows
    /// the two below; from here it knows what kind of change the next publication is about.
    [[nodiscard]] Subscription observeEvents(std::function<void(const WindowEvent&)> listener) const {
        return events_.subscribe(std::move(listener));
    }

    /// Published after each event that changed a record. Never null.
    const Published<WindowMapRef>& windows() const { return windows_; }
    /// Published when the focus moves; only real changes.
    const Published<std::optional<WindowID>>& focusedID() const { return focusedID_; }

    /// All records of a process, placeholders included, in no order.
    std::vector<WindowSnapshot> snapshot(ProcessID pid) const;

    bool isProcessAlive(ProcessID pid) const { return isProcessAlive_(pid); }

private:
    void handle(const event::Added& change);
    void handle(const event::Removed& change);
    void handle(const event::TitleChanged& change);
    void handle(const event::FrameChanged& change);
    void handle(const event::FullscreenChanged& change);
    void handle(const event::Focused& change);
    void handle(const event::AppTerminated& change);
    void handle(const event::AppBecameWindowless& change);
    void handle(const event::AppLostLastWindow& change);
    void handle(const event::AppGotFirstWindow& change);

    template <class T>
    void setField(WindowID id, T WindowSnapshot::*field, const T& value);
    void insertPlaceholder(WindowMap& windows, ProcessID pid, const std::optional<std::string>& bundleID,
                           const std::string& appName);
    void clearFocus(WindowID id);
    /// The map to change before `publishWindows`: the current one, or a copy of it if somebody keeps that.
    WindowMap& mutableWindows();
    void publishWindows();

    WindowIDMint& mint_;
    std::function<bool(ProcessID)> isProcessAlive_;
    mutable Signal<const WindowEvent&> events_;
    std::shared_ptr<WindowMap> map_ = std::make_shared<WindowMap>();
    Published<WindowMapRef> windows_{map_};
    Published<std::optional<WindowID>> focusedID_;
};

}  // namespace morvel
