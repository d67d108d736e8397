// Which texts are shown in the person's browser when another program or a server asks for it.
#pragma once

#include <algorithm>
#include <string_view>

namespace morvel {

/// Whether the text is "https://" and more, without blanks and control characters.
inline bool isSecureWebAddress(std::string_view text) {
    constexpr std::string_view kScheme = "https://";
    const auto isSame = [](char a, char b) { return (b >= 'A' && b <= 'Z' ? b - 'A' + 'a' : b) == a; };
    const auto isUnfit = [](char c) { return static_cast<unsigned char>(c) <= ' ' || c == 0x7F; };
    return text.size() > kScheme.size() && std::equal(kScheme.begin(), kScheme.end(), text.begin(), isSame) &&
           text[kScheme.size()] != '/' && std::none_of(text.begin(), text.end(), isUnfit);
}

}  // namespace morvel
