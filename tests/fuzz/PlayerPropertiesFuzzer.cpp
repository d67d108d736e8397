// What players say of themselves on the session bus, in the text form of a dictionary "a{sv}".
#include <glib.h>

#include "Fuzzing.h"
#include "Platform/Linux/NowPlaying/PlayerChoice.h"
#include "Platform/Linux/System/BusCalls.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace morvel;
    const std::string text(fuzz::textOf(data, size));
    const x11::Variant properties(g_variant_parse(G_VARIANT_TYPE_VARDICT, text.c_str(), nullptr, nullptr, nullptr));
    if (!properties) return 0;
    x11::MprisValues values;
    x11::readProperties(properties.get(), values);
    for (const std::string& said : {values.title, values.artist, values.identity, values.desktopEntry})
        fuzz::require(said.size() <= 512 && g_utf8_validate(said.data(), gssize(said.size()), nullptr),
                      "a text is short and UTF-8");
    fuzz::require(values.artPath.empty() || values.artPath.starts_with('/'), "a picture's path is absolute");

    const std::vector<RunningApplication> applications = {
        {.pid = ProcessID{10}, .bundleID = "org.videolan.VLC", .localizedName = "VLC media player"}};
    x11::chooseKnownPlayer({{"org.mpris.MediaPlayer2." + values.title, ProcessID{0}, values, 1}}, applications);
    return 0;
}
