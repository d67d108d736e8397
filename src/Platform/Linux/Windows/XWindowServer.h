// Workspaces as Spaces: every display has all of them, and shows the same one.
#pragma once

#include "Platform/Linux/Screens/XScreens.h"
#include "Platform/Linux/Windows/ClientWindows.h"
#include "Platform/Linux/Windows/WindowRequests.h"
#include "Platform/WindowServer.h"

namespace morvel::x11 {

/// The Space of a workspace is its index plus one. Answers come from what is tracked; nothing waits.
class XWindowServer : public WindowServer {
public:
    /// All outlive this.
    XWindowServer(RootState& root, ClientWindows& clients, WindowRequests& requests, XScreens& screens);

    std::optional<SpaceID> activeSpace() override;
    std::optional<std::vector<ManagedDisplay>> managedDisplaySpaces() override;
    std::optional<std::vector<SpaceID>> spacesOf(WindowNumber window) override;

    /// A window is on one workspace or on all of them, so one that is added to a second one is put on all.
    void addToSpaces(WindowNumber window, const std::vector<SpaceID>& spaces) override;
    /// A window that is taken from some of all goes to the first one that is left; its last one it keeps.
    void removeFromSpaces(WindowNumber window, const std::vector<SpaceID>& spaces) override;
    void moveToSpace(WindowNumber window, SpaceID space) override;

    [[nodiscard]] Subscription observeSpaceEvents(std::function<void(uint32_t event)> changed) override;

    std::vector<ListedWindow> windowList(WindowListScope scope) override;
    std::optional<int> layerOf(WindowNumber window) override;

private:
    std::vector<SpaceID> allSpaces() const;

    RootState& root_;
    ClientWindows& clients_;
    WindowRequests& requests_;
    XScreens& screens_;
    Signal<uint32_t> events_;
    Subscriptions subscriptions_;
};

}  // namespace morvel::x11
