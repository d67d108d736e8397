// The properties of a client window that are followed, and how each is read into the window's record.
#pragma once

#include <cstdint>
#include <vector>

#include "Platform/Linux/System/XConnection.h"
#include "Platform/Linux/Windows/ClientWindow.h"

namespace morvel::x11 {

/// What a property had to say besides the record itself; needed until the process is resolved.
struct ClientOwner {
    std::optional<int32_t> server;  ///< the process as the server knows it
    std::optional<int32_t> told;
    bool isLocal = true;
};

struct ClientProperty {
    xcb_atom_t atom;
    uint32_t length;  ///< of what is read at most, in units of four bytes; a longer value is cut
    void (*read)(const Atoms&, const xcb_get_property_reply_t*, ClientWindow&, ClientOwner&);
};

/// One row per property, in the order in which they are asked for.
std::vector<ClientProperty> clientProperties(const Atoms& atoms);

}  // namespace morvel::x11
