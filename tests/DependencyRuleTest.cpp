// The one dependency rule, read off the includes: hosts implement the seams, the core uses them, and nothing points
// upward or in a circle.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace morvel {

namespace {

namespace fs = std::filesystem;

/// Each source file by its path below src, with what it includes, as written: <...> or "...".
using Includes = std::map<std::string, std::vector<std::string>>;

const std::set<std::string> kSubsystems = {"App",    "Settings", "Permissions", "Display",      "Bar",
                                           "Pinned", "AutoHide", "Clamping",    "WindowSource", "Launcher",
                                           "Theme",  "Update",   "NowPlaying"};

std::string folderOf(const std::string& path) {
    return path.substr(0, path.find('/'));
}
bool isHostOnly(const std::string& path) {
    return path.starts_with("Platform/Linux/") || path.starts_with("Platform/Mac/");
}
bool isStandardHeader(const std::string& name) {
    static const std::regex kPattern("[a-z0-9_]+");  // no folder, no ".h": neither a system's nor a library's
    return std::regex_match(name, kPattern);
}

std::vector<std::string> includesOf(std::istream& file) {
    static const std::regex kInclude(R"(^\s*#\s*(?:include|import)\s*([<"][^>"]+)[>"].*)");
    std::vector<std::string> found;
    std::smatch match;
    for (std::string line; std::getline(file, line);)
        if (std::regex_match(line, match, kInclude)) found.push_back(match[1]);
    return found;
}

Includes readSources() {
    Includes sources;
    const fs::path root = MORVEL_SOURCE_DIR;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp") continue;
        std::ifstream file(entry.path());
        sources[entry.path().lexically_relative(root).generic_string()] = includesOf(file);
    }
    return sources;
}

/// Why the file may not include that; empty when it may. `include` starts with its opening bracket or quote.
std::string objection(const std::string& file, const std::string& include) {
    const std::string folder = folderOf(file), name = include.substr(1), target = folderOf(name);
    const bool isOwn = include.front() == '"';
    const bool isMain = fs::path(file).filename() == "Main.cpp";
    if (folder == "Platform") {
        if (isOwn && kSubsystems.contains(target) && !isMain) return "a host knows no subsystem";
        if (isOwn && !isHostOnly(file) && isHostOnly(name)) return "a seam knows no host";
        return "";
    }
    if (!isOwn) {
        if (isStandardHeader(name) || name == "nlohmann/json.hpp") return "";
        return "the core knows no system and no library";
    }
    if (isHostOnly(name)) return "the core knows no host";
    if (!kSubsystems.contains(folder) && kSubsystems.contains(target))
        return "what is below the subsystems knows none of them";
    if (folder != "App" && target == "App") return "only the composition root knows everything";
    return "";
}

/// A chain of files of which each includes the next and the last the first; empty for none.
class CycleSearch {
public:
    explicit CycleSearch(const Includes& sources) : sources_(sources) {}

    std::vector<std::string> find() {
        for (const auto& [file, includes] : sources_)
            if (leadsToCycle(file)) return path_;
        return {};
    }

private:
    bool leadsToCycle(const std::string& file) {
        if (const auto again = std::ranges::find(path_, file); again != path_.end()) {
            path_.erase(path_.begin(), again);
            return true;
        }
        const auto source = sources_.find(file);
        if (source == sources_.end() || !finished_.insert(file).second) return false;
        path_.push_back(file);
        for (const std::string& include : source->second)
            if (include.front() == '"' && leadsToCycle(include.substr(1))) return true;
        path_.pop_back();
        return false;
    }

    const Includes& sources_;
    std::set<std::string> finished_;
    std::vector<std::string> path_;
};

}  // namespace

TEST(DependencyRule, EveryFileKeepsIt) {
    const Includes sources = readSources();
    size_t includes = 0;
    for (const auto& [file, included] : sources) {
        EXPECT_TRUE(kSubsystems.contains(folderOf(file)) || file.starts_with("Util/") || file.starts_with("UI/") ||
                    file.starts_with("Platform/"))
            << file << ": no rule is known for this folder";
        includes += included.size();
        for (const std::string& include : included)
            EXPECT_EQ(objection(file, include), "") << file << " includes " << include.substr(1);
    }
    EXPECT_GT(includes, 100u) << "the sources were not found";
}

TEST(DependencyRule, NoFileIncludesItselfInTheEnd) {
    const Includes sources = readSources();
    EXPECT_EQ(CycleSearch(sources).find(), std::vector<std::string>());
}

TEST(DependencyRule, BreachesAreFound) {
    std::istringstream source("#include <vector>\n  #  include \"Util/Geometry.h\"  // why\n// #include <not.h>\n");
    EXPECT_EQ(includesOf(source), (std::vector<std::string>{"<vector", "\"Util/Geometry.h"}));
    const std::tuple<const char*, const char*, bool> rows[] = {
        {"Bar/A.cpp", "<xcb/xcb.h", false},
        {"UI/A.h", "<unistd.h", false},
        {"Update/A.cpp", "<nlohmann/json.hpp", true},
        {"Bar/A.cpp", "\"Platform/Linux/System/Atoms.h", false},
        {"Bar/A.cpp", "\"Platform/Screens.h", true},
        {"Bar/A.cpp", "\"App/AppDelegate.h", false},
        {"App/A.cpp", "\"Bar/MorvelView.h", true},
        {"Util/A.h", "\"Theme/IconCache.h", false},
        {"Platform/Linux/A.cpp", "\"WindowSource/WindowStore.h", false},
        {"Platform/Linux/Main.cpp", "\"App/AppDelegate.h", true},
        {"Platform/Log.h", "\"Platform/Mac/apple/CF.h", false},
    };
    for (const auto& [file, include, isAllowed] : rows)
        EXPECT_EQ(objection(file, include).empty(), isAllowed) << file << ": " << include;
    const Includes circle = {{"A.h", {"\"B.h"}}, {"B.h", {"<vector", "\"C.h"}}, {"C.h", {"\"B.h"}}, {"D.h", {"\"A.h"}}};
    EXPECT_EQ(CycleSearch(circle).find(), (std::vector<std::string>{"B.h", "C.h"}));
}

}  // namespace morvel
