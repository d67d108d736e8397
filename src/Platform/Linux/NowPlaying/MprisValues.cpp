#include "Platform/Linux/NowPlaying/MprisValues.h"

#include <climits>
#include <cstring>

#include "Platform/Linux/System/BusCalls.h"

namespace morvel::x11 {

namespace {

/// In bytes; far more than a label shows.
constexpr size_t kLongestText = 512;
constexpr size_t kMostArtists = 16;

// The bus hands out no text that is not UTF-8, so cutting between characters keeps it so.
std::string shortened(const char* text) {
    const size_t length = strnlen(text, kLongestText + 1);
    if (length <= kLongestText) return {text, length};
    const char* end = text + kLongestText;
    while (end > text && (static_cast<unsigned char>(*end) & 0xC0) == 0x80) --end;
    return {text, end};
}

/// Null for another type.
const char* textOf(GVariant* value) {
    const bool isText = value && g_variant_is_of_type(value, G_VARIANT_TYPE_STRING);
    return isText ? g_variant_get_string(value, nullptr) : nullptr;
}

Variant valueOf(GVariant* dictionary, const char* key) {
    return Variant(g_variant_lookup_value(dictionary, key, nullptr));
}

void readText(GVariant* dictionary, const char* key, std::string& text) {
    const Variant value = valueOf(dictionary, key);
    if (const char* said = textOf(value.get())) text = shortened(said);
}

// A list by the standard; some players give a single text.
std::string artistsOf(GVariant* value) {
    if (const char* single = textOf(value)) return shortened(single);
    if (!value || !g_variant_is_of_type(value, G_VARIANT_TYPE_STRING_ARRAY)) return {};
    std::string all;
    GVariantIter artists;
    g_variant_iter_init(&artists, value);
    const char* artist = nullptr;
    for (size_t i = 0; i < kMostArtists && g_variant_iter_next(&artists, "&s", &artist); ++i)
        all += (all.empty() ? "" : ", ") + shortened(artist);
    return shortened(all.c_str());
}

std::string localPath(GVariant* value) {
    const char* const address = textOf(value);
    if (!address || !g_str_has_prefix(address, "file://") || strnlen(address, PATH_MAX) == PATH_MAX) return {};
    char* host = nullptr;
    char* const path = g_filename_from_uri(address, &host, nullptr);
    const bool isLocal = path && (!host || !*host || std::strcmp(host, "localhost") == 0);
    std::string found = isLocal ? path : "";
    g_free(host);
    g_free(path);
    return found;
}

PlaybackStatus statusFrom(const std::string& text) {
    if (text == "Playing") return PlaybackStatus::Playing;
    return text == "Paused" ? PlaybackStatus::Paused : PlaybackStatus::Stopped;
}

}  // namespace

void readProperties(GVariant* properties, MprisValues& values) {
    readText(properties, "DesktopEntry", values.desktopEntry);
    readText(properties, "Identity", values.identity);
    if (const Variant status = valueOf(properties, "PlaybackStatus")) {
        const char* const text = textOf(status.get());
        values.status = statusFrom(text ? text : "");
    }
    const Variant track = valueOf(properties, "Metadata");
    if (!track) return;
    values.title.clear();
    values.artist.clear();
    values.artPath.clear();
    if (!g_variant_is_of_type(track.get(), G_VARIANT_TYPE_VARDICT)) return;
    readText(track.get(), "xesam:title", values.title);
    values.artist = artistsOf(valueOf(track.get(), "xesam:artist").get());
    values.artPath = localPath(valueOf(track.get(), "mpris:artUrl").get());
}

}  // namespace morvel::x11
