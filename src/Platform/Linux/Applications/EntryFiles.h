// Where desktop entries lie as files, and the identifiers that their places give them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvel::x11 {

inline constexpr std::string_view kEntrySuffix = ".desktop";

/// The folders of applications, the person's own first: what is in an earlier one replaces the same in a later one.
std::vector<std::string> entryFolders();

/// The entries' files in this folder, as paths relative to it. Sub-folders are read a few levels deep, links that lead
/// in a circle included. Nothing: the folder cannot be read.
std::optional<std::vector<std::string>> entryFiles(const std::string& folder);

/// That of a file with this path relative to its folder: "kde/okular.desktop" is "kde-okular".
std::string entryIdentifier(std::string file);

}  // namespace morvel::x11
