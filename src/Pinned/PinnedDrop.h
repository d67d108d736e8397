// What is pinned when files are dropped on the bar, and where.
#pragma once

#include <optional>
#include <string>

#include "Pinned/PinnedItem.h"
#include "Platform/InstalledApplications.h"

namespace morvel::PinnedDrop {

/// An application where there is one at the path; everything else is opened by its path. The disk is asked only about
/// paths that end as applications do. Nothing for a path that cannot be stored: one that is not UTF-8.
std::optional<PinnedItem> itemAt(const std::string& path, InstalledApplications& applications);

/// The place among the pinned items of an index in the bar's launch strip, which `systemButtons` buttons precede.
int slot(size_t dropIndex, size_t systemButtons);

}  // namespace morvel::PinnedDrop
