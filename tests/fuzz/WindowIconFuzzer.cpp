// The pictures that other programs put into window properties. The first byte is the size that is wanted.
#include <cstring>
#include <vector>

#include "Fuzzing.h"
#include "Platform/Linux/Icons/ImageLoading.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace morvel;
    if (size == 0) return 0;
    std::vector<uint32_t> property((size - 1) / sizeof(uint32_t));
    if (!property.empty()) std::memcpy(property.data(), data + 1, property.size() * sizeof(uint32_t));
    const auto icon = x11::choosePropertyIcon(property, data[0]);
    if (!icon) return 0;
    fuzz::require(icon->pixels.size() == size_t(icon->width) * size_t(icon->height), "it has all of its pixels");
    fuzz::require(icon->pixels.data() >= property.data() &&
                      icon->pixels.data() + icon->pixels.size() <= property.data() + property.size(),
                  "its pixels are the property's");
    fuzz::require(x11::makeImage(*icon) != nullptr, "there is a picture");
    return 0;
}
