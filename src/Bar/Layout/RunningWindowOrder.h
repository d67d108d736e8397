// Where each running window's button stands: kept places, inherited places, and places beside the same application.
#pragma once

#include <unordered_map>
#include <vector>

#include "WindowSource/WindowSnapshot.h"

namespace morvel::RunningWindowOrder {

/// The next order of the windows `current`, from the order `old` that was shown last and the processes of its windows.
/// Windows that stay keep their places; a new window takes the place of one of its process that is gone, else stands
/// after the last of its process, else at the end, in the order of `current`. Each id of `current` exactly once.
std::vector<WindowID> sync(const std::vector<WindowID>& old, const std::unordered_map<WindowID, ProcessID>& oldPIDs,
                           const std::vector<WindowSnapshot>& current);

}  // namespace morvel::RunningWindowOrder
