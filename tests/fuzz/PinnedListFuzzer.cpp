// The list of pinned items as it is stored, in its present form and its former one.
#include "Fuzzing.h"
#include "Pinned/PinnedItemsCoding.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace morvel;
    const Data stored(data, data + size);
    PinnedItemsCoding::decodeLegacy(stored);
    const auto items = PinnedItemsCoding::decode(stored);
    if (!items) return 0;
    const auto again = PinnedItemsCoding::encode(*items);
    fuzz::require(again.has_value(), "what was read can be stored");
    fuzz::require(PinnedItemsCoding::decode(*again) == items, "what was stored is read as the same");
    return 0;
}
