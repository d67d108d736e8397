#include "Theme/AccentResolver.h"

#include <charconv>
#include <cstdint>

namespace morvel::AccentResolver {

std::optional<ui::RGBA> parse(std::string_view hex) {
    constexpr size_t kDigits = 8;
    uint32_t bits = 0;
    // The reader stops at anything that is no digit, takes no blank, sign or prefix, and never overflows on 8 digits.
    const auto [end, error] = std::from_chars(hex.data(), hex.data() + hex.size(), bits, 16);
    if (hex.size() != kDigits || error != std::errc() || end != hex.data() + hex.size()) return std::nullopt;
    const auto component = [bits](int shift) { return (bits >> shift & 0xFF) / 255.0; };
    return ui::RGBA{component(24), component(16), component(8), component(0)};
}

ui::Color resolved(const SettingsStore& settings) {
    if (settings.accentColorMode.value() == AccentColorMode::Custom)
        if (const auto chosen = parse(settings.accentColorCustom.value())) return ui::customColor(*chosen);
    return ui::kControlAccentColor;
}

}  // namespace morvel::AccentResolver
