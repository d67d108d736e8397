// The windows of other programs, followed by their events so that asking about one costs nothing.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <vector>

#include "Platform/Linux/Windows/ClientProperties.h"
#include "Platform/Linux/Windows/ClientWindow.h"
#include "Platform/Linux/Windows/RootState.h"
#include "Platform/MainLoop.h"

namespace morvel::x11 {

/// What happened to a window. A window that is not admissible (any more) is told like any other.
enum class ClientChange { Added, Removed, Title, Moved, Resized, Fullscreen, Admission, Desktop, Strut };

/// Main thread only. The windows are those of the window manager's client list. One that leaves the list though it is
/// still shown stays: its window manager is being replaced, and only a living one that leaves it out again is believed.
/// New windows are asked about in one batch and show up when all is known. Windows of this process are left out.
class ClientWindows {
public:
    /// All outlive this. The windows are known once the connection's replies have been settled.
    ClientWindows(XConnection& connection, MainLoop& mainLoop, RootState& root);
    ~ClientWindows();

    /// Null when the window is not known (any more). Valid until the next turn of the loop.
    const ClientWindow* find(xcb_window_t window) const;
    /// In the order of their first mapping.
    std::vector<const ClientWindow*> all() const;
    bool isMinimized(const ClientWindow& client) const;
    /// The active window, if it is one of these.
    const ClientWindow* active() const;

    /// The record is as it is after the change; for Removed, as it last was. Called in a turn of the loop.
    using Listener = std::function<void(const ClientWindow&, ClientChange)>;
    [[nodiscard]] Subscription observe(Listener listener) { return changed_.subscribe(std::move(listener)); }
    /// Another window is active, or none; not before the window is known.
    [[nodiscard]] Subscription observeActive(std::function<void()> changed) {
        return activeChanged_.subscribe(std::move(changed));
    }

private:
    struct Tracked;

    void listChanged();
    void track(xcb_window_t window);
    void fetchAll(Tracked& tracked);
    void fetch(Tracked& tracked, size_t property);
    void fetchServerPid(Tracked& tracked);
    void fetchGeometry(Tracked& tracked);
    void fetchPosition(Tracked& tracked);
    void complete(Tracked& tracked);
    void handleEvent(xcb_window_t window, const xcb_generic_event_t& event);
    void handleConfigure(Tracked& tracked, const xcb_configure_notify_event_t& event);
    void fetchDirty();
    void tellChanges(const Tracked& tracked, const ClientWindow& before);
    void checkMissing(Tracked& tracked);
    void armOrphanCheck();
    void removeOrphans();
    void remove(xcb_window_t window);
    template <class Reply>
    void whenTracked(xcb_window_t window, unsigned sequence, std::function<void(Tracked&, const Reply*)> replied);
    Tracked* tracked(xcb_window_t window, uint64_t serial);

    XConnection& connection_;
    MainLoop& mainLoop_;
    RootState& root_;
    const std::vector<ClientProperty> properties_;
    std::map<xcb_window_t, std::unique_ptr<Tracked>> windows_;
    std::set<xcb_window_t> dirty_;  // with properties or a position to fetch at the batch's end
    uint64_t lastSerial_ = 0;
    bool canAskPids_ = false;
    Timer orphanCheck_;
    Signal<const ClientWindow&, ClientChange> changed_;
    Signal<> activeChanged_;
    Subscriptions subscriptions_;
};

}  // namespace morvel::x11
