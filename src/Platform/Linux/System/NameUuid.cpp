#include "Platform/Linux/System/NameUuid.h"

#include "Util/Identity.h"

namespace morvel::x11 {

namespace {

uint64_t fnv(const std::string& text, uint64_t seed) {
    uint64_t hash = 0xCBF29CE484222325ull ^ seed;
    for (const char c : text) hash = (hash ^ static_cast<uint8_t>(c)) * 0x100000001B3ull;
    return hash;
}

}  // namespace

std::string nameUuid(const std::string& name) {
    return WindowID{fnv(name, 0), fnv(name, 0x9E3779B97F4A7C15ull)}.text();
}

}  // namespace morvel::x11
