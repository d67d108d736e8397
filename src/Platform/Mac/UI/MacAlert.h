// Questions as modal alerts.
#pragma once

#include <optional>

#include "UI/Alert.h"

namespace morvel::mac {

/// Blocks until answered. Nothing when the alert was ended without an answer. Not to be called from within the main
/// queue, whose work would rest meanwhile.
std::optional<std::size_t> runAlert(const ui::Alert& alert);

}  // namespace morvel::mac
