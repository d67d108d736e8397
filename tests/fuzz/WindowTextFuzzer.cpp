// Titles, classes and machine names that other programs put into window properties.
#include <glib.h>

#include "Fuzzing.h"
#include "Platform/Linux/Windows/TextProperty.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace morvel;
    const std::string_view text = fuzz::textOf(data, size);
    for (const std::string& read : {x11::cleanUtf8(text), x11::latin1ToUtf8(text), x11::compoundTextToUtf8(text)}) {
        fuzz::require(g_utf8_validate(read.data(), gssize(read.size()), nullptr), "what is read is UTF-8");
        fuzz::require(read.size() <= 3 * text.size(), "no text grows without bounds");
        fuzz::require(x11::cleanUtf8(read) == read, "a clean text stays as it is");
    }
    size_t together = 0;
    for (const std::string& part : x11::splitAtNul(text)) together += part.size() + 1;
    fuzz::require(together == text.size() || together == text.size() + 1, "nothing is lost between the parts");
    return 0;
}
