// Finding the file of a named icon, as the desktops' icon theme convention tells.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvel::x11 {

/// A folder of a theme and the sizes, in pixels, that its icons are for.
struct IconFolder {
    std::string path;  ///< within the theme
    int least = 0, most = 0;
    int scale = 1;

    /// How far the folder's icons are from `size`; 0 when they are made for it. Smaller icons count as further away
    /// than larger ones, since enlarging blurs.
    int distance(int size) const;
};

struct IconThemeIndex {
    std::vector<std::string> parents;
    std::vector<IconFolder> folders;
};

/// Reads an index.theme; lines that make no sense are skipped.
IconThemeIndex parseThemeIndex(std::string_view text);

/// Main thread only. Folders are looked at when an icon is first asked for.
class IconTheme {
public:
    /// `roots` hold themes as their subfolders, and icons without a theme; the first root that has an icon counts.
    IconTheme(std::vector<std::string> roots, std::string name);

    /// The file of the first name that the theme, its parents or the common themes have; nothing when none has.
    std::optional<std::string> find(const std::vector<std::string>& names, int size);

    /// The roots of this system and person.
    static std::vector<std::string> systemRoots();
    /// The theme that the person chose, or the desktops' usual one.
    static std::string chosenName();

private:
    struct Theme {
        std::vector<std::string> paths;  // the theme's folder in each root that has it
        IconThemeIndex index;
    };

    const Theme& theme(const std::string& name);
    std::vector<std::string> lineage();
    std::optional<std::string> findIn(const Theme& theme, const std::string& icon, int size) const;
    std::optional<std::string> findWithoutTheme(const std::string& icon) const;

    const std::vector<std::string> roots_;
    const std::string name_;
    std::map<std::string, Theme> themes_;
    std::optional<std::vector<std::string>> lineage_;
};

}  // namespace morvel::x11
