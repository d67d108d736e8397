#include "Platform/Linux/Icons/IconTheme.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <sstream>

#include "Platform/AtomicFile.h"

namespace morvel::x11 {

namespace {

constexpr size_t kLargestIndex = 1 << 20;
constexpr size_t kMostThemes = 16;  // in a lineage; themes may inherit in circles
constexpr int kSmallerIsWorse = 3;
// A vector icon looks best but costs its renderer, so it counts as this many pixels off: a bitmap that is nearer is
// good enough.
constexpr int kVectorCost = 40;
constexpr std::string_view kVectorSuffix = ".svg";
constexpr int kThreshold = 2;  // the convention's, where a folder does not say
constexpr std::array<const char*, 3> kSuffixes{".png", ".svg", ".xpm"};

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

using Section = std::map<std::string, std::string, std::less<>>;

std::map<std::string, Section> parseSections(std::string_view text) {
    std::map<std::string, Section> out;
    Section* section = nullptr;
    while (!text.empty()) {
        const auto line = trimmed(text.substr(0, text.find('\n')));
        text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
        const auto equals = line.find('=');
        if (line.size() > 2 && line.front() == '[' && line.back() == ']')
            section = &out[std::string(line.substr(1, line.size() - 2))];
        else if (section && equals != std::string_view::npos && line.front() != '#')
            section->try_emplace(std::string(trimmed(line.substr(0, equals))), trimmed(line.substr(equals + 1)));
    }
    return out;
}

std::vector<std::string> splitList(const std::string& text) {
    std::vector<std::string> out;
    std::istringstream in(text);
    for (std::string item; std::getline(in, item, ',');)
        if (const auto name = trimmed(item); !name.empty()) out.emplace_back(name);
    return out;
}

std::string valueOr(const Section& section, std::string_view key, std::string fallback) {
    const auto found = section.find(key);
    return found == section.end() ? fallback : found->second;
}

int numberOr(const Section& section, std::string_view key, int fallback) {
    const std::string text = valueOr(section, key, "");
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && number > 0 && number < 100'000 ? number : fallback;
}

IconFolder folderOf(const std::string& path, const Section& section) {
    const int size = numberOr(section, "Size", 48);
    const int scale = numberOr(section, "Scale", 1);
    const std::string type = valueOr(section, "Type", "Threshold");
    if (type == "Fixed") return {path, size, size, scale};
    if (type == "Scalable")
        return {path, numberOr(section, "MinSize", size), numberOr(section, "MaxSize", size), scale};
    const int threshold = numberOr(section, "Threshold", kThreshold);
    return {path, size - threshold, size + threshold, scale};
}

bool exists(const std::string& path) {
    return ::access(path.c_str(), R_OK) == 0;
}

std::optional<std::string> withSuffix(const std::string& stem) {
    for (const char* suffix : kSuffixes)
        if (exists(stem + suffix)) return stem + suffix;
    return std::nullopt;
}

std::string environment(const char* name, const std::string& fallback) {
    const char* value = std::getenv(name);
    return value && *value ? value : fallback;
}

}  // namespace

int IconFolder::distance(int size) const {
    const int smallest = least * scale, largest = most * scale;
    if (size < smallest) return smallest - size;
    if (size > largest) return (size - largest) * kSmallerIsWorse;
    return 0;
}

IconThemeIndex parseThemeIndex(std::string_view text) {
    const auto sections = parseSections(text);
    const auto main = sections.find("Icon Theme");
    if (main == sections.end()) return {};
    IconThemeIndex index;
    index.parents = splitList(valueOr(main->second, "Inherits", ""));
    for (const char* key : {"Directories", "ScaledDirectories"})
        for (const std::string& path : splitList(valueOr(main->second, key, "")))
            if (const auto section = sections.find(path); section != sections.end())
                index.folders.push_back(folderOf(path, section->second));
    return index;
}

IconTheme::IconTheme(std::vector<std::string> roots, std::string name)
    : roots_(std::move(roots)), name_(std::move(name)) {}

std::vector<std::string> IconTheme::systemRoots() {
    const std::string home = environment("HOME", "");
    std::vector<std::string> roots{home + "/.icons", environment("XDG_DATA_HOME", home + "/.local/share") + "/icons"};
    std::istringstream in(environment("XDG_DATA_DIRS", "/usr/local/share:/usr/share"));
    for (std::string folder; std::getline(in, folder, ':');)
        if (!folder.empty()) roots.push_back(folder + "/icons");
    roots.push_back("/usr/share/pixmaps");
    return roots;
}

std::string IconTheme::chosenName() {
    const std::string config = environment("XDG_CONFIG_HOME", environment("HOME", "") + "/.config");
    for (const std::string& folder : {config, std::string("/etc")}) {
        const auto text = readFile(folder + "/gtk-3.0/settings.ini", kLargestIndex);
        if (!text) continue;
        const auto sections = parseSections(*text);
        const auto settings = sections.find("Settings");
        if (settings == sections.end()) continue;
        const std::string name = valueOr(settings->second, "gtk-icon-theme-name", "");
        if (!name.empty() && name.find('/') == std::string::npos) return name;
    }
    return "Adwaita";
}

const IconTheme::Theme& IconTheme::theme(const std::string& name) {
    const auto [entry, isNew] = themes_.try_emplace(name);
    Theme& theme = entry->second;
    if (!isNew) return theme;
    for (const std::string& root : roots_) {
        const std::string path = root + "/" + name;
        if (!exists(path)) continue;
        theme.paths.push_back(path);
        if (theme.index.folders.empty())
            if (const auto text = readFile(path + "/index.theme", kLargestIndex)) theme.index = parseThemeIndex(*text);
    }
    return theme;
}

// The theme, then its parents breadth first, then what every desktop falls back to.
std::vector<std::string> IconTheme::lineage() {
    if (lineage_) return *lineage_;
    std::vector<std::string> names{name_};
    const auto add = [&names](const std::string& name) {
        const bool isUsable = name.find('/') == std::string::npos && names.size() < kMostThemes;
        if (isUsable && std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    };
    for (size_t i = 0; i < names.size(); ++i)
        for (const std::string& parent : theme(names[i]).index.parents)
            if (parent != "hicolor") add(parent);
    for (const char* common : {"Adwaita", "hicolor"}) add(common);
    lineage_ = names;
    return names;
}

std::optional<std::string> IconTheme::find(const std::vector<std::string>& names, int size) {
    std::vector<std::string> icons = names;
    std::erase_if(icons, [](const std::string& icon) { return icon.empty() || icon.find('/') != std::string::npos; });
    for (const std::string& name : lineage())
        for (const std::string& icon : icons)
            if (auto found = findIn(theme(name), icon, size)) return found;
    for (const std::string& icon : icons)
        if (auto found = findWithoutTheme(icon)) return found;
    return std::nullopt;
}

std::optional<std::string> IconTheme::findIn(const Theme& theme, const std::string& icon, int size) const {
    std::optional<std::string> best;
    int bestDistance = 0;
    for (const IconFolder& folder : theme.index.folders) {
        const int distance = folder.distance(size);
        if (best && distance >= bestDistance) continue;
        for (const std::string& path : theme.paths) {
            auto found = withSuffix(path + "/" + folder.path + "/" + icon);
            if (!found) continue;
            const int cost = distance + (found->ends_with(kVectorSuffix) ? kVectorCost : 0);
            if (!best || cost < bestDistance) {
                best = std::move(found);
                bestDistance = cost;
            }
            break;
        }
        if (best && bestDistance == 0) break;
    }
    return best;
}

std::optional<std::string> IconTheme::findWithoutTheme(const std::string& icon) const {
    for (const std::string& root : roots_) {
        if (auto found = withSuffix(root + "/" + icon)) return found;
        // Some entries name the file with its suffix.
        if (icon.find('.') != std::string::npos && exists(root + "/" + icon)) return root + "/" + icon;
    }
    return std::nullopt;
}

}  // namespace morvel::x11
