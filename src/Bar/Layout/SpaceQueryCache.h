// The Spaces of windows and displays, as one projection asks for them.
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <unordered_map>

#include "Util/Identity.h"

namespace morvel {

/// Made anew for every projection: Spaces change between two of them.
class SpaceQueryCache {
public:
    using SpacesOfWindow = std::function<std::set<SpaceID>(WindowNumber)>;
    using FirstUserSpace = std::function<std::optional<SpaceID>(DisplayID)>;

    SpaceQueryCache(SpacesOfWindow spacesOfWindow, FirstUserSpace firstUserSpace)
        : askSpaces_(std::move(spacesOfWindow)), askFirstUserSpace_(std::move(firstUserSpace)) {}

    /// Not remembered: a projection looks at each window once, and remembering hundreds of sets costs more than they
    /// do.
    std::set<SpaceID> spaces(WindowNumber window) const { return askSpaces_(window); }

    /// The first user Space of the display, in the window server's order; an absent answer is remembered too.
    std::optional<SpaceID> firstUserSpaceID(DisplayID display) {
        const auto known = firstUserSpaces_.find(display);
        if (known != firstUserSpaces_.end()) return known->second;
        return firstUserSpaces_.emplace(display, askFirstUserSpace_(display)).first->second;
    }

private:
    SpacesOfWindow askSpaces_;
    FirstUserSpace askFirstUserSpace_;
    std::unordered_map<DisplayID, std::optional<SpaceID>> firstUserSpaces_;
};

}  // namespace morvel
