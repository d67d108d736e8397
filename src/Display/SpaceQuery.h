// Which Spaces displays and windows have. Every answer that cannot be had is empty.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "Platform/Screens.h"
#include "Platform/WindowServer.h"
#include "Util/Signal.h"

namespace morvel {

struct DisplaySpaces {
    std::optional<SpaceID> current;  ///< may be a full-screen Space, which is not among `spaces`
    std::vector<SpaceID> spaces;     ///< the display's user Spaces, each once, in the window server's order
};

/// Main thread only.
class SpaceQuery {
public:
    /// Both outlive this.
    SpaceQuery(WindowServer& server, Screens& screens) : server_(server), screens_(screens) {}

    std::optional<SpaceID> activeSpace() const;
    std::map<DisplayID, DisplaySpaces> snapshotByDisplay() const;
    /// The display that a window-server dictionary's identifier names.
    std::optional<DisplayID> resolveDisplayID(const std::optional<std::string>& identifier) const;
    /// Empty when the window is on none or it cannot be told.
    std::set<SpaceID> spaces(WindowNumber window) const;
    /// Nothing is done for an empty set.
    void add(WindowNumber window, const std::set<SpaceID>& spaces);
    void remove(WindowNumber window, const std::set<SpaceID>& spaces);
    void move(WindowNumber window, SpaceID space);
    /// After a window was asked to change its Spaces by one of these: the system tells nobody.
    [[nodiscard]] Subscription observeMoves(std::function<void()> moved) { return moved_.subscribe(std::move(moved)); }

private:
    WindowServer& server_;
    Screens& screens_;
    Signal<> moved_;
};

}  // namespace morvel
