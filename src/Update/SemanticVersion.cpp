#include "Update/SemanticVersion.h"

#include <array>
#include <charconv>

namespace morvel {

std::optional<int64_t> parseInteger(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return std::nullopt;
    }
    int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stopped != end) return std::nullopt;
    return number;
}

std::optional<SemanticVersion> SemanticVersion::parse(std::string_view text) {
    std::array<int64_t, 3> parts{};
    for (size_t i = 0; i < parts.size(); ++i) {
        const bool isLast = i + 1 == parts.size();
        const size_t dot = text.find('.');
        if ((dot == std::string_view::npos) != isLast) return std::nullopt;
        const auto part = parseInteger(text.substr(0, dot));
        if (!part || *part < 0) return std::nullopt;
        parts[i] = *part;
        text.remove_prefix(isLast ? text.size() : dot + 1);
    }
    return SemanticVersion{parts[0], parts[1], parts[2]};
}

std::string SemanticVersion::description() const {
    return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(patch);
}

}  // namespace morvel
