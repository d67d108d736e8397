// A desktop entry, as programs put them into the data folders. The file's folder is the only one with entries.
#include <cstdlib>

#include "Fuzzing.h"
#include "Platform/Linux/Applications/DesktopEntries.h"
#include "Platform/Linux/Applications/EntryCandidates.h"
#include "Platform/Linux/Applications/InstalledEntries.h"
#include "x11/TemporaryFolder.h"

namespace morvel::x11 {
namespace {

/// The library reads the variables once and remembers which files there are, so there is one file for the whole run.
const TemporaryFolder& dataFolder() {
    static const TemporaryFolder folder;
    static const bool isSet = [] {
        setenv("XDG_DATA_HOME", folder.at("").c_str(), 1);
        setenv("XDG_DATA_DIRS", folder.at("none").c_str(), 1);
        return true;
    }();
    static_cast<void>(isSet);
    return folder;
}

/// The words of a program's line and class, which lead to entries.
void findByNames(DesktopEntries& entries, const std::string& names) {
    const std::string program = execProgram(names);
    fuzz::require(program.find('/') == program.npos, "a program's name has no folder");
    for (const std::string& id : entryCandidates(program, names))
        fuzz::require(!id.empty() && id.find('/') == id.npos && id.front() != '.', "a candidate is a plain name");
    entries.findForClass(program, names);
}

}  // namespace
}  // namespace morvel::x11

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace morvel;
    using namespace morvel::x11;
    const std::string text(fuzz::textOf(data, size));
    const std::string path = dataFolder().write("applications/fuzzed.desktop", text);
    InstalledEntries installed;
    DesktopEntries entries;
    const auto bundle = installed.bundle(path);
    const auto entry = entries.find("fuzzed");
    fuzz::require(bundle.has_value() == entry.has_value(), "both readers agree on whether it is an application");
    if (bundle) fuzz::require(bundle->identifier == "fuzzed", "an application is known by its file");
    if (bundle && bundle->name) installed.compareNames(*bundle->name, bundle->displayName.value_or(""));
    const size_t exec = text.find("Exec=");
    findByNames(entries, exec == text.npos ? text : text.substr(exec + 5, text.find('\n', exec) - exec - 5));
    return 0;
}
