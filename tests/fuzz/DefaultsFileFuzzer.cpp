// The defaults file of the Linux host, and what the core reads out of it: any value may be of any type, as in a
// property list that somebody wrote by hand.
#include "Fuzzing.h"
#include "Pinned/PinnedAppsStore.h"
#include "Platform/AtomicFile.h"
#include "Platform/Linux/System/JsonDefaults.h"
#include "Settings/SettingsStore.h"
#include "sim/FakeMainLoop.h"
#include "sim/SimLog.h"
#include "x11/TemporaryFolder.h"

namespace morvel {
namespace {

constexpr size_t kLargest = 1 << 20;

/// What the program makes of the file when it starts and then changes something.
std::string rewritten(const std::string& path) {
    sim::FakeMainLoop mainLoop;
    sim::SimLog log;
    {
        x11::JsonDefaults defaults(path, mainLoop, log);
        const SettingsStore settings(defaults);
        const PinnedAppsStore pinned(defaults);
        defaults.set("touched", {true});
        defaults.remove("touched");
    }
    return readFile(path, kLargest).value_or("");
}

}  // namespace
}  // namespace morvel

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace morvel;
    const TemporaryFolder folder;
    const std::string path = folder.write("defaults.json", std::string(fuzz::textOf(data, size)));
    const std::string once = rewritten(path);
    fuzz::require(!once.empty(), "there is a file again, whatever there was before");
    fuzz::require(rewritten(path) == once, "what was written is read as the same");
    return 0;
}
