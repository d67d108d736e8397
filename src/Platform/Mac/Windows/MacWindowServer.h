// The window server, through its private functions for Spaces and the public list of windows.
#pragma once

#include "Platform/Log.h"
#include "Platform/Mac/Windows/SpaceEvents.h"
#include "Platform/Mac/apple/CFRef.h"
#include "Platform/WindowServer.h"

namespace morvel::mac {

class MacWindowServer : public WindowServer {
public:
    /// The log outlives this.
    explicit MacWindowServer(Log& log) : log_(log) {}

    std::optional<SpaceID> activeSpace() override;
    std::optional<std::vector<ManagedDisplay>> managedDisplaySpaces() override;
    std::optional<std::vector<SpaceID>> spacesOf(WindowNumber window) override;

    // Later systems refuse to move other programs' windows, without saying so. The window's Spaces are read back after
    // each attempt and a refusal is logged once.
    void addToSpaces(WindowNumber window, const std::vector<SpaceID>& spaces) override;
    /// A window is never taken off all the Spaces it is on: where adding was refused it would be nowhere.
    void removeFromSpaces(WindowNumber window, const std::vector<SpaceID>& spaces) override;
    void moveToSpace(WindowNumber window, SpaceID space) override;

    [[nodiscard]] Subscription observeSpaceEvents(std::function<void(uint32_t event)> changed) override;

    /// Without the desktop's own elements.
    std::vector<ListedWindow> windowList(WindowListScope scope) override;
    std::optional<int> layerOf(WindowNumber window) override;

private:
    /// Looks whether the window is on these Spaces, as it was asked to be.
    void readBack(WindowNumber window, const std::vector<SpaceID>& spaces);

    Log& log_;
    SpaceFunctions functions_;
    SpaceEvents events_{functions_};
    bool hasLoggedRefusal_ = false;
};

}  // namespace morvel::mac
