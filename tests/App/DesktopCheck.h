// What the store and the bars must be once a simulated desktop has come to rest, worked out from the desktop alone.
#pragma once

#include <map>
#include <set>

#include "App/BarDesktop.h"

namespace morvel {

/// Each check fails the test where the program and the desktop differ.
class DesktopCheck {
public:
    /// `countable`: the windows that were opened as ones that count for the bar.
    DesktopCheck(BarDesktop& desktop, const std::set<const sim::SimWindow*>& countable)
        : desktop_(desktop), countable_(countable) {}

    /// Each counting window of a running regular application has one record with its present title and frame, and
    /// each such application without any has one placeholder; there is nothing else.
    void storeEqualsDesktop();
    /// Each display has one bar of the right place, which shows exactly the records that belong there, once each.
    void barsShowWhatTheyShould();
    /// Each bar has the visible pinned items in their order, dots where they run, and no trace of a drag.
    void pinsAreShown();
    /// Every view that is shown is part of a tree that is shown; what is open has its bar.
    void nothingIsLeftOver();
    /// The window has the focus, in the store and on every bar that shows it, and no other has.
    void onlyFocused(const sim::SimWindow& window);

private:
    void expectRecord(const sim::SimWindow& window);
    std::set<WindowID> expectedOn(const Screen& screen);
    bool belongsOn(const WindowSnapshot& record, const Screen& screen);
    std::multiset<WindowID> shownOn(ui::View& bar);
    const WindowMap& records() { return *desktop_.delegate().windowStore()->windows().value(); }

    BarDesktop& desktop_;
    const std::set<const sim::SimWindow*>& countable_;
};

}  // namespace morvel
