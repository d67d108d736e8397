// Which player is shown, and on which application's buttons.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/Linux/NowPlaying/MprisValues.h"
#include "Platform/Workspace.h"

namespace morvel::x11 {

/// What is known of a player.
struct KnownPlayer {
    std::string_view busName;  ///< as in "org.mpris.MediaPlayer2.vlc.instance42"
    ProcessID pid;             ///< 0 where it is not known
    const MprisValues& values;
    int64_t statusChange = 0;  ///< larger for a later one
};

struct ChosenPlayer {
    size_t index;
    std::string bundleID;  ///< of the running application that the player is

    bool operator==(const ChosenPlayer&) const = default;
};

/// The running application that a player belongs to: the one of its process, else the one that its desktop entry, its
/// name on the bus or its name for people stands for. Nothing for a player without windows.
std::optional<std::string> applicationOf(const KnownPlayer& player,
                                         const std::vector<RunningApplication>& applications);

/// Of the players that play, else of those that have paused, the one that began to last. One that has no buttons could
/// not be shown and does not count.
std::optional<ChosenPlayer> chooseKnownPlayer(const std::vector<KnownPlayer>& players,
                                              const std::vector<RunningApplication>& applications);

}  // namespace morvel::x11
