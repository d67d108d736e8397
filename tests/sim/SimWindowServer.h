// A window server whose displays, Spaces and window list a test fills, with entries missing where it likes.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "Platform/WindowServer.h"
#include "Util/Signal.h"
#include "sim/Journal.h"

namespace morvel::sim {

class SimWindowServer : public WindowServer {
public:
    /// The numbers of the server's own events for a switch of Space.
    static constexpr uint32_t kSpaceEvents[] = {1327, 1328};

    explicit SimWindowServer(Journal& journal) : journal_(journal) {}

    std::optional<SpaceID> activeSpace() override { return hasSpaceFunctions ? active : std::nullopt; }
    std::optional<std::vector<ManagedDisplay>> managedDisplaySpaces() override {
        ++spaceQueries;
        return hasSpaceFunctions ? std::optional(displays) : std::nullopt;
    }
    std::optional<std::vector<SpaceID>> spacesOf(WindowNumber window) override;
    void addToSpaces(WindowNumber window, const std::vector<SpaceID>& spaces) override;
    void removeFromSpaces(WindowNumber window, const std::vector<SpaceID>& spaces) override;
    void moveToSpace(WindowNumber window, SpaceID space) override;
    Subscription observeSpaceEvents(std::function<void(uint32_t event)> changed) override;
    std::vector<ListedWindow> windowList(WindowListScope scope) override;
    std::optional<int> layerOf(WindowNumber window) override;

    void raise(WindowNumber window);
    void unlist(WindowNumber window);
    ListedWindow* find(WindowNumber window);
    /// The display's dictionary; null when there is none of that identifier.
    ManagedDisplay* display(const std::string& identifier);

    bool keepsLastSpace = true;     ///< as the hosts do; false: a window is taken off all its Spaces when asked to
    bool hasSpaceFunctions = true;  ///< false: the private functions are missing on this system
    std::optional<SpaceID> active;
    std::vector<ManagedDisplay> displays;
    std::map<WindowNumber, std::set<SpaceID>> windowSpaces;
    std::vector<ListedWindow> windows;  ///< front to back
    std::set<WindowNumber> offScreen;   ///< minimized and hidden ones
    Signal<uint32_t> spaceEvents;
    int spaceQueries = 0;
    int spaceObservers = 0;  ///< registrations so far

private:
    void record(const char* what, WindowNumber window, const std::vector<SpaceID>& spaces);
    bool isOnCurrentSpace(WindowNumber window) const;

    Journal& journal_;
};

}  // namespace morvel::sim
