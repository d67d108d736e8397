// Displays, windows and Spaces as the window server knows them, scripted by tests. Its private functions can be hidden.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Platform/Mac/apple/CGGeometry.h"
#include "SystemObjects.h"

namespace morvel::mac::checked {

class WindowServerWorld {
public:
    static WindowServerWorld& process();
    void reset() { *this = WindowServerWorld(); }

    struct Window {
        std::uint32_t number = 0;
        std::int32_t layer = 0;
        std::int32_t pid = 0;
        CGRect bounds;
        std::string ownerName = {};
        std::string name = {};
    };
    using SpaceCallback = void (*)(std::uint32_t event, void* data, std::size_t length, void* context);

    std::vector<Window> windows;  // front to back
    std::uint32_t lastListOptions = 0;
    Id listedBesides;  // one more entry of the list, which may be anything
    std::uint32_t mainDisplay = 1;
    std::map<std::uint32_t, std::string> displayUUIDs = {{1, "00000000-0000-0000-0000-000000000001"}};

    Id managedDisplaySpaces;  // the array as the server hands it out; may hold anything. Empty: the call fails
    std::uint64_t activeSpace = 1;
    std::map<std::uint32_t, std::set<std::uint64_t>> spacesOfWindow;
    bool refusesMoves = false;

    /// Tells the registered callbacks, as the server does from a thread of its own.
    void spaceChanged(std::uint32_t event);
    /// The private functions, by name.
    static const std::map<std::string, void*>& functions();
    /// The function is missing on this system.
    void hide(const std::string& function) { hidden_.insert(function); }
    void* function(const std::string& name) const;

    struct Registration {
        std::uint32_t event;
        SpaceCallback callback;
        void* context;
    };
    std::vector<Registration> registrations;

private:
    std::set<std::string> hidden_;
};

inline WindowServerWorld& windowServer() {
    return WindowServerWorld::process();
}

}  // namespace morvel::mac::checked
