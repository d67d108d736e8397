// What the window manager tells on the root window: its clients, the active one and the workspaces.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <vector>

#include "Platform/Linux/System/XConnection.h"
#include "Util/Signal.h"

namespace morvel::x11 {

/// Follows the properties without ever waiting: a changed one is asked for once per batch of events, unless the answer
/// to an earlier request will tell the change. Known once the connection's replies have been settled. Without a window
/// manager the lists are empty and there is one workspace.
class RootState {
public:
    explicit RootState(XConnection& connection);

    /// In the order of their first mapping. Nothing while no window manager keeps the list: that says nothing about
    /// the windows.
    const std::optional<std::vector<xcb_window_t>>& clients() const { return clients_; }
    std::optional<xcb_window_t> activeWindow() const { return active_; }
    uint32_t currentDesktop() const { return currentDesktop_; }
    uint32_t desktopCount() const { return desktopCount_; }
    /// Whether the window manager says that it knows this hint.
    bool supports(xcb_atom_t hint) const { return supported_.contains(hint); }

    [[nodiscard]] Subscription observeClients(std::function<void()> changed) {
        return clientsChanged_.subscribe(changed);
    }
    [[nodiscard]] Subscription observeActive(std::function<void()> changed) {
        return activeChanged_.subscribe(changed);
    }
    [[nodiscard]] Subscription observeDesktops(std::function<void()> changed) {
        return desktopsChanged_.subscribe(changed);
    }
    /// A window manager came, went or was replaced.
    [[nodiscard]] Subscription observeWindowManager(std::function<void()> changed) {
        return windowManagerChanged_.subscribe(changed);
    }
    /// Answers in a later turn whether a window manager is there at this moment.
    void askWhetherManaged(std::function<void(bool)> answered);

private:
    struct Followed;
    static const std::vector<Followed>& followed();

    void request(const Followed& property);
    bool isAnswerNewer(const xcb_generic_event_t& change, xcb_atom_t property) const;
    void requestDirty();
    void readClients(const xcb_get_property_reply_t* reply);
    void readActive(const xcb_get_property_reply_t* reply);
    void readCurrentDesktop(const xcb_get_property_reply_t* reply);
    void readDesktopCount(const xcb_get_property_reply_t* reply);
    void readSupported(const xcb_get_property_reply_t* reply);
    void readCheck(const xcb_get_property_reply_t* reply);

    XConnection& connection_;
    std::optional<std::vector<xcb_window_t>> clients_;
    std::optional<xcb_window_t> active_;
    uint32_t currentDesktop_ = 0;
    uint32_t desktopCount_ = 1;
    std::set<xcb_atom_t> supported_;
    std::set<xcb_atom_t> dirty_;            // changed since the last batch's end
    std::map<xcb_atom_t, unsigned> asked_;  // the numbers of the last requests
    Signal<> clientsChanged_, activeChanged_, desktopsChanged_, windowManagerChanged_;
    Subscriptions subscriptions_;
};

}  // namespace morvel::x11
