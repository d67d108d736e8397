// Whether to look for a release, and whether the one found is for this computer.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Platform/UserDefaults.h"
#include "Update/SemanticVersion.h"

namespace morvel {

/// Compares dotted numbers from the left; a piece that is no number does not count, and missing ones are zero.
bool osMeetsRequirement(std::string_view currentOS, std::string_view required);

/// `local` is absent where this program's version cannot be read: nothing is newer then. `currentOS` is absent where
/// releases are not made for versions of the system, as outside macOS.
bool isUpgrade(const std::optional<SemanticVersion>& local, const SemanticVersion& remote,
               std::string_view minimumOSVersion, const std::optional<std::string>& currentOS);

/// A last check in the future counts by its distance, so that a clock once set wrong cannot stop the checks for years.
bool isCheckDue(bool isAutomatic, const std::optional<Date>& lastChecked, Date now);

}  // namespace morvel
