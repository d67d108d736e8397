// What the system's menu bar shows: asked when first needed, and then kept until it may have changed.
#pragma once

#include <optional>
#include <vector>

#include "Bar/MenuBar/CompactTopBuffer.h"
#include "Platform/Accessibility.h"
#include "Platform/Screens.h"
#include "Platform/WindowServer.h"
#include "Platform/Workspace.h"

namespace morvel {

/// Main thread only. Between two calls of `forget` the window list is asked for once, the application that owns the
/// menus is asked once, and the owners of status items only if the items have changed since they were asked last. What
/// cannot be told is nothing.
class MenuBar {
public:
    /// All outlive this.
    struct System {
        Accessibility& accessibility;
        WindowServer& windowServer;
        Workspace& workspace;
        Screens& screens;
    };
    explicit MenuBar(const System& system) : system_(system) {}

    /// Whether this system has such a thing, shown at the moment or not.
    bool exists() const { return system_.screens.statusBarThickness() > 0; }

    /// Of the menu bar on this screen, in points.
    std::optional<double> height(const Screen& screen);
    /// Where the menu titles on this screen end, in screen coordinates.
    std::optional<double> rightmostMenuTitleX(const Screen& screen);
    StatusItemXs statusItems(const Screen& screen, int collapsedCount);

    /// Things may have changed: what is told next is asked anew.
    void forget();

private:
    const std::vector<ListedWindow>& windows();
    const std::vector<Rect<AXSpace>>& probedItems();
    std::vector<ListedWindow> itemsOnAllScreens();
    std::vector<ProcessID> ownersToAsk(const std::vector<ListedWindow>& items);
    double firstScreenHeight() const;

    System system_;
    std::optional<std::vector<ListedWindow>> windows_;
    std::optional<std::optional<Rect<AXSpace>>> lastTitle_;  // what the owner of the menus told, once it was asked
    bool areItemsProbed_ = false;                            // since things were forgotten last, or still good
    std::vector<Rect<AXSpace>> probedItems_;
    std::vector<ListedWindow> probedFor_;  // what the window list told when the items were probed
};

}  // namespace morvel
