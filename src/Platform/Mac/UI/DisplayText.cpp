// Validating and replacing, one sequence at a time.
#include "Platform/Mac/UI/DisplayText.h"

#include <cstddef>
#include <cstdint>

namespace morvel::mac {

namespace {

constexpr std::size_t kMaxShownCharacters = 1000;

/// The length of the valid sequence at the start of `text`, which is not empty; 0 when there is none.
std::size_t sequenceLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    if (first < 0x80) return 1;
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < length) return 0;
    std::uint32_t character = first & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return 0;
        character = character << 6 | (byte(i) & 0x3F);
    }
    const bool isOverlong = (length == 3 && character < 0x800) || (length == 4 && character < 0x10000);
    const bool isSurrogate = character >= 0xD800 && character < 0xE000;
    return isOverlong || isSurrogate || character > 0x10FFFF ? 0 : length;
}

}  // namespace

std::string displayText(std::string_view text) {
    std::string shown;
    for (std::size_t count = 0; !text.empty() && count < kMaxShownCharacters; ++count) {
        const std::size_t length = sequenceLength(text);
        const auto first = static_cast<unsigned char>(text[0]);
        if (length == 0) {
            shown += "\uFFFD";
        } else if (first < 0x20 || first == 0x7F) {
            shown += ' ';
        } else {
            shown += text.substr(0, length);
        }
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return shown;
}

}  // namespace morvel::mac
