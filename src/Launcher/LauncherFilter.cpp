#include "Launcher/LauncherFilter.h"

namespace morvel::LauncherFilter {

namespace {

/// Bytes beyond ASCII count as letters: where their words begin is not for a table of ours to say.
bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || static_cast<unsigned char>(c) >= 0x80;
}

bool hasWordAt(std::string_view query, std::string_view name) {
    for (size_t at = name.find(query, 1); at != std::string_view::npos; at = name.find(query, at + 1))
        if (!isLetterOrDigit(name[at - 1])) return true;
    return false;
}

}  // namespace

std::vector<size_t> filtered(std::string_view query, const std::vector<std::string>& names) {
    std::vector<size_t> kept;
    for (size_t i = 0; i < names.size(); ++i)
        if (names[i].find(query) != std::string::npos) kept.push_back(i);
    return kept;
}

std::optional<size_t> bestMatch(std::string_view query, const std::vector<std::string>& names,
                                const std::vector<size_t>& kept) {
    if (query.empty() || kept.empty()) return std::nullopt;
    std::optional<size_t> wordStart;
    for (size_t place = 0; place < kept.size(); ++place) {
        const std::string& name = names[kept[place]];
        if (name.starts_with(query)) return place;
        if (!wordStart && hasWordAt(query, name)) wordStart = place;
    }
    return wordStart.value_or(0);
}

}  // namespace morvel::LauncherFilter
