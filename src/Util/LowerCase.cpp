#include "Util/LowerCase.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace morvel {

namespace {

/// The capitals from `first` to `last`, every one or every other, have their small letters at a fixed distance.
struct Capitals {
    char32_t first, last;
    char32_t step;
    int32_t distance;
};

// Source: the simple lower-case mappings of the Unicode Character Database. In order.
constexpr auto kCapitals = std::to_array<Capitals>({
    {0xC0, 0xD6, 1, 32},        {0xD8, 0xDE, 1, 32},        {0x100, 0x12E, 2, 1},       {0x132, 0x136, 2, 1},
    {0x139, 0x147, 2, 1},       {0x14A, 0x176, 2, 1},       {0x178, 0x178, 1, -121},    {0x179, 0x17D, 2, 1},
    {0x182, 0x184, 2, 1},       {0x187, 0x187, 1, 1},       {0x18B, 0x18B, 1, 1},       {0x18F, 0x18F, 1, 202},
    {0x191, 0x191, 1, 1},       {0x198, 0x198, 1, 1},       {0x1A0, 0x1A4, 2, 1},       {0x1AF, 0x1AF, 1, 1},
    {0x1B3, 0x1B5, 2, 1},       {0x1C4, 0x1C4, 1, 2},       {0x1C7, 0x1C7, 1, 2},       {0x1CA, 0x1CA, 1, 2},
    {0x1CB, 0x1DB, 2, 1},       {0x1DE, 0x1EE, 2, 1},       {0x1F1, 0x1F1, 1, 2},       {0x1F2, 0x1F4, 2, 1},
    {0x1F8, 0x21E, 2, 1},       {0x222, 0x232, 2, 1},       {0x386, 0x386, 1, 38},      {0x388, 0x38A, 1, 37},
    {0x38C, 0x38C, 1, 64},      {0x38E, 0x38F, 1, 63},      {0x391, 0x3A1, 1, 32},      {0x3A3, 0x3AB, 1, 32},
    {0x400, 0x40F, 1, 80},      {0x410, 0x42F, 1, 32},      {0x460, 0x480, 2, 1},       {0x48A, 0x4BE, 2, 1},
    {0x4C0, 0x4C0, 1, 15},      {0x4C1, 0x4CD, 2, 1},       {0x4D0, 0x52E, 2, 1},       {0x531, 0x556, 1, 48},
    {0x1E00, 0x1E94, 2, 1},     {0x1E9E, 0x1E9E, 1, -7615}, {0x1EA0, 0x1EFE, 2, 1},     {0x1F08, 0x1F0F, 1, -8},
    {0x1F18, 0x1F1D, 1, -8},    {0x1F28, 0x1F2F, 1, -8},    {0x1F38, 0x1F3F, 1, -8},    {0x1F48, 0x1F4D, 1, -8},
    {0x1F59, 0x1F5F, 2, -8},    {0x1F68, 0x1F6F, 1, -8},    {0x2126, 0x2126, 1, -7517}, {0x212A, 0x212A, 1, -8383},
    {0x212B, 0x212B, 1, -8262}, {0xFF21, 0xFF3A, 1, 32},
});

char32_t lowerCased(char32_t c) {
    const auto found = std::ranges::lower_bound(kCapitals, c, {}, &Capitals::last);
    if (found == kCapitals.end() || c < found->first || (c - found->first) % found->step != 0) return c;
    return static_cast<char32_t>(static_cast<int32_t>(c) + found->distance);
}

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// How many bytes the letter at the front takes if it is one of two or three that may have a case, else 0.
size_t lengthOfCased(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const size_t length = lead >= 0xC2 && lead < 0xE0 ? 2 : lead >= 0xE1 && lead < 0xF0 ? 3 : 0;
    if (text.size() < length) return 0;
    for (size_t i = 1; i < length; ++i)
        if (!isContinuation(text[i])) return 0;
    return length;
}

char32_t decoded(std::string_view letter) {
    char32_t c = static_cast<unsigned char>(letter.front()) & (letter.size() == 2 ? 0x1F : 0x0F);
    for (const char byte : letter.substr(1)) c = (c << 6) | (static_cast<unsigned char>(byte) & 0x3F);
    return c;
}

void append(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

}  // namespace

std::string lowerCased(std::string_view text) {
    constexpr char32_t kDottedCapitalI = 0x130;  // the one capital whose small form is two characters
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const size_t length = lengthOfCased(text);
        if (length == 0) {
            const char c = text.front();
            out += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
            text.remove_prefix(1);
            continue;
        }
        const char32_t c = decoded(text.substr(0, length));
        if (c == kDottedCapitalI)
            out += "i\u0307";
        else
            append(out, lowerCased(c));
        text.remove_prefix(length);
    }
    return out;
}

}  // namespace morvel
