// Texts that other programs put into window properties, made into valid UTF-8 whatever they hold.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace morvel::x11 {

/// Invalid sequences become U+FFFD; a sequence that the end cuts off is dropped, since reading is bounded. Ends at the
/// first NUL; control characters become blanks, as titles are single lines.
std::string cleanUtf8(std::string_view text);

/// ISO 8859-1, as the type STRING says.
std::string latin1ToUtf8(std::string_view text);

/// COMPOUND_TEXT: the Latin-1 and UTF-8 parts of it; what is in another character set becomes U+FFFD, since the
/// clients that still use those also set a UTF-8 name.
std::string compoundTextToUtf8(std::string_view text);

/// A list of NUL-terminated texts, as WM_CLASS is.
std::vector<std::string> splitAtNul(std::string_view text);

}  // namespace morvel::x11
