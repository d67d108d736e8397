// Lists of files as programs on X hand them to each other: the type text/uri-list.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace morvel::x11 {

/// The absolute paths of the local files in the list, in its order. Comments, other schemes, files of other machines,
/// and what is not an absolute path or contains a zero byte once decoded are left out. The list is another program's
/// and may be anything; of absurdly many files, the first ones.
std::vector<std::string> localPathsIn(std::string_view uriList);

}  // namespace morvel::x11
