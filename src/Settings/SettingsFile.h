// The settings as a file that a person can keep and bring to another machine.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Settings/SettingsStore.h"

namespace morvel::SettingsFile {

/// All choices as JSON text, in UTF-8.
std::string exported(SettingsStore& settings);

/// Takes over the choices in the text and returns how many those were. Each value has to be one that the store would
/// read from the defaults; numbers out of range become the nearest allowed ones. Names that are not known are passed
/// over. Nothing: the text is no such file or has a value that cannot be read, and no setting was changed.
std::optional<int> imported(SettingsStore& settings, std::string_view text);

}  // namespace morvel::SettingsFile
