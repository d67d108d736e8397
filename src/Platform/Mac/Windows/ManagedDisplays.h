// The window server's description of displays and Spaces, and arrays of its numbers, as our types.
#pragma once

#include <vector>

#include "Platform/Mac/apple/CFRef.h"
#include "Platform/WindowServer.h"

namespace morvel::mac {

/// What is no dictionary is left out; an entry that is missing, of another type or negative is absent.
std::vector<ManagedDisplay> managedDisplaysFrom(CFArrayRef displays);

/// What is no number of a Space is left out.
std::vector<SpaceID> spaceIDsFrom(CFArrayRef numbers);

CFRef<CFArrayRef> makeWindowIDArray(const std::vector<WindowNumber>& windows);
CFRef<CFArrayRef> makeSpaceIDArray(const std::vector<SpaceID>& spaces);

}  // namespace morvel::mac
