// Questions to the window server about Spaces and the window list, and moving windows between Spaces.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Util/Geometry.h"
#include "Util/Identity.h"
#include "Util/Subscription.h"

namespace morvel {

/// A Space as the server describes it; every entry may be missing or of an unexpected type, and is then absent.
struct ManagedSpace {
    std::optional<int64_t> type;
    std::optional<SpaceID> id64;
    std::optional<SpaceID> managedSpaceID;
};

/// A display's Spaces as the server describes them, in the server's order.
struct ManagedDisplay {
    std::optional<std::string> identifier;  ///< the display's UUID text, or "Main"
    std::vector<ManagedSpace> spaces;
    std::optional<ManagedSpace> current;
};

/// An entry of the server's window list.
struct ListedWindow {
    WindowNumber number;
    std::optional<ProcessID> owner;
    std::optional<int> layer;  ///< 0 is the layer of ordinary windows
    Rect<AXSpace> bounds;
    std::string ownerName;
    std::string name;
};

enum class WindowListScope { All, OnScreen };

/// Main thread only. Answers are snapshots and may be stale by the next turn of the loop. Nothing throws: what
/// cannot be asked on this system, or not now, is an empty optional or does nothing.
class WindowServer {
public:
    virtual ~WindowServer() = default;

    virtual std::optional<SpaceID> activeSpace() = 0;
    virtual std::optional<std::vector<ManagedDisplay>> managedDisplaySpaces() = 0;

    /// The Spaces a window is on. No value: could not be asked. Empty: asked, and it is on none, as a tab in the
    /// background is.
    virtual std::optional<std::vector<SpaceID>> spacesOf(WindowNumber window) = 0;

    virtual void addToSpaces(WindowNumber window, const std::vector<SpaceID>& spaces) = 0;
    virtual void removeFromSpaces(WindowNumber window, const std::vector<SpaceID>& spaces) = 0;
    virtual void moveToSpace(WindowNumber window, SpaceID space) = 0;

    /// Calls `changed` on the main thread with the server's event number after each switch of Space. The notice can
    /// come before the animation ends, so an answer asked for at once may still describe the old Space. An empty
    /// token where the server offers no such notice.
    [[nodiscard]] virtual Subscription observeSpaceEvents(std::function<void(uint32_t event)> changed) = 0;

    /// In no order that tells anything.
    virtual std::vector<ListedWindow> windowList(WindowListScope scope) = 0;
    /// The layer of one window; nothing when the server does not list it.
    virtual std::optional<int> layerOf(WindowNumber window) = 0;
};

}  // namespace morvel
