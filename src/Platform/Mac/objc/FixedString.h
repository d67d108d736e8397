// Text that is known while compiling: the names of selectors and the encodings of types, as template arguments.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace morvel::mac::objc {

template <std::size_t kSize>
struct FixedString {
    char text[kSize] = {};

    constexpr FixedString() = default;
    constexpr FixedString(const char (&source)[kSize]) { std::copy_n(source, kSize, text); }

    constexpr std::string_view view() const { return {text, kSize - 1}; }
    constexpr std::size_t count(char wanted) const {
        return static_cast<std::size_t>(std::ranges::count(text, wanted));
    }
};

template <std::size_t kLeft, std::size_t kRight>
constexpr FixedString<kLeft + kRight - 1> operator+(const FixedString<kLeft>& left, const FixedString<kRight>& right) {
    FixedString<kLeft + kRight - 1> joined;
    std::copy_n(left.text, kLeft - 1, joined.text);
    std::copy_n(right.text, kRight, joined.text + kLeft - 1);
    return joined;
}

}  // namespace morvel::mac::objc
