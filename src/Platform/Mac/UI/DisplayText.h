// Texts of other programs as they can be shown: strings of the system's take nothing but valid UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace morvel::mac {

/// What is not UTF-8 becomes U+FFFD, a control character a space. Cut where no display could show more, since the
/// system would lay out a title of a megabyte to its end.
std::string displayText(std::string_view text);

}  // namespace morvel::mac
