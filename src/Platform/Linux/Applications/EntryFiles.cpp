#include "Platform/Linux/Applications/EntryFiles.h"

#include <glib.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace morvel::x11 {

namespace {

namespace fs = std::filesystem;

constexpr int kDeepestFolder = 4;
constexpr int kMostFiles = 20'000;  // beyond this it is no folder of applications

std::string entriesBelow(const char* dataFolder) {
    return (fs::path(dataFolder) / "applications").string();
}

}  // namespace

std::vector<std::string> entryFolders() {
    std::vector<std::string> found{entriesBelow(g_get_user_data_dir())};
    for (const char* const* folder = g_get_system_data_dirs(); *folder; ++folder) {
        const std::string path = entriesBelow(*folder);
        if (fs::path(path).is_absolute() && std::ranges::count(found, path) == 0) found.push_back(path);
    }
    return found;
}

std::optional<std::vector<std::string>> entryFiles(const std::string& folder) {
    std::error_code error;
    fs::recursive_directory_iterator entry(
        folder, fs::directory_options::follow_directory_symlink | fs::directory_options::skip_permission_denied, error);
    if (error) return std::nullopt;
    std::vector<std::string> names;
    for (int files = 0; entry != fs::recursive_directory_iterator() && files < kMostFiles; ++files) {
        if (entry.depth() >= kDeepestFolder) entry.disable_recursion_pending();
        if (entry->path().native().ends_with(kEntrySuffix))
            names.push_back(entry->path().native().substr(folder.size() + 1));
        entry.increment(error);
        if (error) break;
    }
    return names;
}

std::string entryIdentifier(std::string file) {
    std::ranges::replace(file, '/', '-');
    if (file.ends_with(kEntrySuffix)) file.resize(file.size() - kEntrySuffix.size());
    return file;
}

}  // namespace morvel::x11
