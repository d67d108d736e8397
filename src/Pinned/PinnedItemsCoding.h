// The list of pinned items as it is stored: a JSON array of objects.
#pragma once

#include <optional>
#include <vector>

#include "Pinned/PinnedAppLegacy.h"
#include "Pinned/PinnedItem.h"
#include "Platform/UserDefaults.h"

namespace morvel::PinnedItemsCoding {

/// Nothing when a text is not UTF-8, which JSON cannot hold.
std::optional<Data> encode(const std::vector<PinnedItem>& items);

// Both read the whole list or nothing: half a list would be stored over the other half with the next change. Members
// that they do not know are ignored.
std::optional<std::vector<PinnedItem>> decode(const Data& stored);
std::optional<std::vector<PinnedAppLegacy>> decodeLegacy(const Data& stored);

}  // namespace morvel::PinnedItemsCoding
