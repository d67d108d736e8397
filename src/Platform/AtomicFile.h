// Replacing a small file so that a crash or a full disk leaves the old one or the new one, never a part.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace morvel {

/// The whole file; nothing when it cannot be read or is larger than `mostBytes`, with the reason in `errno` (ENOENT
/// when there is none, EFBIG when it is too large).
std::optional<std::string> readFile(const std::string& path, size_t mostBytes);

/// Makes the folder if it is missing. False when it could not be written, with the reason in `errno`; the old file is
/// then as it was. A symbolic link stays one, and the file it leads to is replaced.
bool replaceFile(const std::string& path, std::string_view content);

}  // namespace morvel
