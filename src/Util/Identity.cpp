#include "Util/Identity.h"

namespace morvel {

namespace {

constexpr size_t kTextLength = 36;

constexpr bool isDash(size_t position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

}  // namespace

std::string WindowID::text() const {
    std::string out(kTextLength, '-');
    int digit = 0;
    for (size_t i = 0; i < kTextLength; ++i) {
        if (isDash(i)) continue;
        const uint64_t word = digit < 16 ? high : low;
        out[i] = "0123456789ABCDEF"[(word >> (60 - 4 * (digit % 16))) & 0xF];
        ++digit;
    }
    return out;
}

std::optional<WindowID> WindowID::parse(std::string_view text) {
    if (text.size() != kTextLength) return std::nullopt;
    WindowID id;
    int digit = 0;
    for (size_t i = 0; i < kTextLength; ++i) {
        if (isDash(i)) {
            if (text[i] != '-') return std::nullopt;
            continue;
        }
        const int value = hexValue(text[i]);
        if (value < 0) return std::nullopt;
        uint64_t& word = digit < 16 ? id.high : id.low;
        word = word << 4 | static_cast<uint64_t>(value);
        ++digit;
    }
    return id;
}

}  // namespace morvel
