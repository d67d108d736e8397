// The index of an icon theme.
#include "Fuzzing.h"
#include "Platform/Linux/Icons/IconTheme.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace morvel;
    for (const x11::IconFolder& folder : x11::parseThemeIndex(fuzz::textOf(data, size)).folders) {
        fuzz::require(!folder.path.empty(), "a folder has a path");
        for (const int wanted : {1, 24, 4096})
            fuzz::require(folder.distance(wanted) >= 0, "no folder is nearer than one of the right size");
    }
    return 0;
}
