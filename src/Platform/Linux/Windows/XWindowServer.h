// Workspaces as Spaces: every display has all of them, and shows the same one.
#pragma once

#include <map>
#include <set>

#include "Platform/Linux/Screens/XScreens.h"
#include "Platform/Linux/Windows/ClientWindows.h"
#include "Platform/Linux/Windows/WindowRequests.h"
#include "Platform/WindowServer.h"

namespace morvel::x11 {

/// The Space of a workspace is its index plus one. Answers come from what is tracked; nothing waits.
class XWindowServer : public WindowServer {
public:
    /// All outlive this.
    XWindowServer(MainLoop& mainLoop, RootState& root, ClientWindows& clients, WindowRequests& requests,
                  XScreens& screens);

    std::optional<SpaceID> activeSpace() override;
    std::optional<std::vector<ManagedDisplay>> managedDisplaySpaces() override;
    std::optional<std::vector<SpaceID>> spacesOf(WindowNumber window) override;

    /// A window is on one workspace or on all of them, so one that is added to a second one is put on all. Which ones
    /// were meant is remembered until it is somewhere else: taken from those again it is back where it was.
    void addToSpaces(WindowNumber window, const std::vector<SpaceID>& spaces) override;
    /// A window that is taken from some of all goes to the first one that is left; its last one it keeps.
    void removeFromSpaces(WindowNumber window, const std::vector<SpaceID>& spaces) override;
    void moveToSpace(WindowNumber window, SpaceID space) override;

    [[nodiscard]] Subscription observeSpaceEvents(std::function<void(uint32_t event)> changed) override;

    std::vector<ListedWindow> windowList(WindowListScope scope) override;
    std::optional<int> layerOf(WindowNumber window) override;

private:
    /// Spaces that were asked for and can differ from what the window manager tells, or not tell it yet.
    struct Asked {
        std::set<SpaceID> spaces;
        uint32_t desktop = kAllDesktops;  // what stands for them
        std::vector<uint32_t> requested;  // and is not told yet, the oldest first
        Instant time;                     // of the newest request
    };

    std::vector<SpaceID> allSpaces() const;
    void setSpaces(const ClientWindow& client, std::set<SpaceID> spaces);
    void desktopChanged(const ClientWindow& client);
    /// What was asked for, as long as it holds; null when the window manager's own word counts.
    const Asked* askedFor(const ClientWindow& client);

    MainLoop& mainLoop_;
    RootState& root_;
    ClientWindows& clients_;
    WindowRequests& requests_;
    XScreens& screens_;
    std::map<xcb_window_t, Asked> asked_;
    Signal<uint32_t> events_;
    Subscriptions subscriptions_;
};

}  // namespace morvel::x11
