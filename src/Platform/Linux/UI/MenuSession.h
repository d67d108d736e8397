// A menu from its appearing to its end: its levels' windows, the grabs, and what pointer and keys do.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Platform/Linux/UI/MenuKeys.h"
#include "Platform/Linux/UI/MenuView.h"
#include "Platform/Linux/UI/Placement.h"
#include "Platform/Linux/UI/ViewWindow.h"
#include "Util/Lifetime.h"

namespace morvel::x11 {

/// Main thread only. Has pointer and keyboard for itself while it is open; where the server refuses that, it ends.
class MenuSession {
public:
    /// Called once, when the windows are gone and the grabs released, with the chosen item's action or with nothing.
    /// The session must not be destroyed inside the call.
    using Ended = std::function<void(std::function<void()> action)>;

    /// Context and toolkit outlive the session. `bar` is not covered if that can be helped.
    MenuSession(ToolkitContext& context, ui::Toolkit& toolkit, ui::Menu menu, Point<RootSpace> at,
                const std::optional<Rect<RootSpace>>& bar, Ended ended);
    ~MenuSession();
    MenuSession(const MenuSession&) = delete;
    MenuSession& operator=(const MenuSession&) = delete;

    /// Closes it without a choice.
    void cancel() { end(nullptr); }

private:
    struct Level {
        std::unique_ptr<MenuView> view;
        std::unique_ptr<ViewWindow> window;
        std::optional<size_t> openItem;  // whose submenu is the next level
    };
    struct Hit {
        size_t level;
        std::optional<size_t> item;
    };

    void addLevel(const ui::Menu& menu, const std::function<Rect<RootSpace>(Size)>& place);
    void openSubmenu(size_t level, size_t item);
    void closeLevelsAfter(size_t level);
    void grab();
    void handle(const xcb_generic_event_t& event);
    void pointerMoved(Point<RootSpace> location);
    void pressed(Point<RootSpace> location);
    void released(Point<RootSpace> location);
    void keyPressed(MenuKey key);
    void settle(size_t level);
    void activate(size_t level, size_t item);
    void scrollBy(Point<RootSpace> location, double distance);
    void reveal(size_t level);
    void setScroll(Level& level, double offset);
    std::optional<Hit> hit(Point<RootSpace> location) const;
    Rect<RootSpace> itemOnRoot(size_t level, size_t item) const;
    void end(std::function<void()> action);

    ToolkitContext& context_;
    ui::Toolkit& toolkit_;
    const ui::Menu menu_;
    Ended ended_;
    MenuKeys keys_;
    const Instant opened_;
    Point<RootSpace> openedAt_;
    bool hasEnded_ = false;
    bool wasUsed_ = false;  // pressed into or dragged over, so that a release is a choice
    std::vector<Level> levels_;
    Timer settle_;
    Lifetime lifetime_;
};

}  // namespace morvel::x11
