// The two players that are asked by script: the texts of the scripts, and what their answers mean.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Platform/NowPlayingPoller.h"

namespace morvel {

/// A player as scripts name it.
struct ScriptedPlayer {
    std::string_view appName;
    std::string_view bundleID;
};

inline constexpr ScriptedPlayer kSpotify{"Spotify", "com.spotify.client"};
inline constexpr ScriptedPlayer kMusic{"Music", "com.apple.Music"};

/// What one player answered.
struct PollResult {
    std::string bundleID;
    std::string title;
    std::string artist;
    bool isPlaying = false;

    bool operator==(const PollResult&) const = default;
};

/// Asks for state, title and artist in one go. It does not start the player, and answers a player that is stopped or
/// fails with an empty text.
std::string playerQueryScript(std::string_view appName);

/// Nothing for an application that is none of the players.
std::optional<std::string> playerCommandScript(TransportCommand command, std::string_view bundleID);

/// The query's answer, or nothing when it is no three parts: a title with the separator in it hides the player.
std::optional<PollResult> parsePlayerAnswer(std::string_view bundleID, const std::optional<std::string>& answer);

/// The one that plays; of two that do, or two that have paused, Spotify.
std::optional<PollResult> choosePlayer(std::optional<PollResult> spotify, std::optional<PollResult> music);

}  // namespace morvel
