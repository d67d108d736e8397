// A simulated desktop whose windows are observed into a store.
#pragma once

#include <memory>
#include <optional>

#include "WindowSource/AXObserverManager.h"
#include "sim/Desktop.h"

namespace morvel {

class WatchedDesktop : public sim::Desktop {
public:
    explicit WatchedDesktop(const std::vector<sim::DisplaySpec>& displays = sim::oneDisplay(1440, 900))
        : Desktop(displays),
          store_(mint_, [this](ProcessID pid) { return workspace().isProcessAlive(pid); }),
          manager_(std::make_unique<AXObserverManager>(
              AXObserverManager::System{mainLoop(), log(), accessibility(), windowServer(), workspace(), screens()},
              mint_, store_)) {}

    /// Starts observing; what was launched before is found, not told.
    void start() {
        settle();
        manager_->start();
        settle();
    }

    WindowStore& store() { return store_; }
    AXObserverManager& manager() { return *manager_; }
    void destroyManager() { manager_.reset(); }
    size_t records() const { return store_.windows().value()->size(); }

    /// The record of the window; null when the store has none.
    const WindowSnapshot* find(const sim::SimWindow& window) const {
        for (const auto& [id, record] : *store_.windows().value())
            if (record.cgWindowID == window.number()) return &record;
        return nullptr;
    }
    /// As `find`, where there must be one.
    WindowID idOf(const sim::SimWindow& window) const {
        const WindowSnapshot* record = find(window);
        if (!record) throw std::logic_error("a window that is not in the store: " + window.title());
        return record->id;
    }
    /// Whether the application shows as a placeholder.
    bool isWindowless(const sim::SimApp& app) const {
        for (const WindowSnapshot& record : store_.snapshot(app.pid()))
            if (record.isWindowless) return true;
        return false;
    }
    bool isFocused(const sim::SimWindow& window) const {
        const WindowSnapshot* record = find(window);
        return record && store_.focusedID().value() == record->id;
    }

private:
    WindowIDMint mint_{1};
    WindowStore store_;
    std::unique_ptr<AXObserverManager> manager_;
};

}  // namespace morvel
