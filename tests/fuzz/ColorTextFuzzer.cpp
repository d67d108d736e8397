// The accent colour as a person may write it into the settings.
#include <algorithm>

#include "Fuzzing.h"
#include "Theme/AccentResolver.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace morvel;
    const std::string_view text = fuzz::textOf(data, size);
    const auto color = AccentResolver::parse(text);
    const bool isColor = text.size() == 8 && text.find_first_not_of("0123456789abcdefABCDEF") == text.npos;
    fuzz::require(color.has_value() == isColor, "eight hexadecimal digits are a colour, and nothing else is");
    if (!color) return 0;
    for (const double part : {color->red, color->green, color->blue, color->alpha})
        fuzz::require(part >= 0 && part <= 1, "each part is within its range");
    return 0;
}
