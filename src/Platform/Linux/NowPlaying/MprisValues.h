// What a media player says of itself and of its track, checked and cut to size.
#pragma once

#include <gio/gio.h>

#include <string>

namespace morvel::x11 {

enum class PlaybackStatus { Stopped, Playing, Paused };

/// Texts are UTF-8 of a reasonable length; empty where the player does not say.
struct MprisValues {
    std::string desktopEntry;  ///< without ".desktop"
    std::string identity;      ///< the player's name for people
    PlaybackStatus status = PlaybackStatus::Stopped;
    std::string title;
    std::string artist;   ///< several separated by commas
    std::string artPath;  ///< absolute, of a local file; pictures elsewhere are never fetched

    bool operator==(const MprisValues&) const = default;
};

/// Takes over those of the properties (a dictionary "a{sv}", of either of a player's interfaces) that are known. One
/// of an unexpected type counts as not said.
void readProperties(GVariant* properties, MprisValues& values);

}  // namespace morvel::x11
