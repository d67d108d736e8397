#include "NowPlaying/PlayerScripts.h"

#include <utility>

namespace morvel {

namespace {

constexpr std::string_view kSeparator = "||";
constexpr std::string_view kQueryHead = "if application \"";
constexpr std::string_view kQueryTell = "\" is running then\n    tell application \"";
constexpr std::string_view kQueryTail =
    "\"\n"
    "        try\n"
    "            set s to player state as text\n"
    "            if s is \"stopped\" then return \"\"\n"
    "            set t to name of current track\n"
    "            set a to artist of current track\n"
    "            return s & \"||\" & t & \"||\" & a\n"
    "        on error\n"
    "            return \"\"\n"
    "        end try\n"
    "    end tell\n"
    "end if\n"
    "return \"\"";

std::string_view verb(TransportCommand command) {
    switch (command) {
        case TransportCommand::Play:
            return "play";
        case TransportCommand::Pause:
            return "pause";
        case TransportCommand::TogglePlayPause:
            return "playpause";
        case TransportCommand::Next:
            return "next track";
        case TransportCommand::Previous:
            return "previous track";
    }
    return "";
}

template <class... Pieces>
std::string concatenated(Pieces... pieces) {
    std::string text;
    (text.append(pieces), ...);
    return text;
}

}  // namespace

std::string playerQueryScript(std::string_view appName) {
    return concatenated(kQueryHead, appName, kQueryTell, appName, kQueryTail);
}

std::optional<std::string> playerCommandScript(TransportCommand command, std::string_view bundleID) {
    for (const ScriptedPlayer& player : {kSpotify, kMusic})
        if (player.bundleID == bundleID)
            return concatenated(std::string_view("tell application \""), player.appName, std::string_view("\" to "),
                                verb(command));
    return std::nullopt;
}

std::optional<PollResult> parsePlayerAnswer(std::string_view bundleID, const std::optional<std::string>& answer) {
    if (!answer) return std::nullopt;
    const size_t first = answer->find(kSeparator);
    if (first == std::string::npos) return std::nullopt;
    const size_t titleAt = first + kSeparator.size();
    const size_t second = answer->find(kSeparator, titleAt);
    if (second == std::string::npos) return std::nullopt;
    const size_t artistAt = second + kSeparator.size();
    if (answer->find(kSeparator, artistAt) != std::string::npos) return std::nullopt;
    return PollResult{std::string(bundleID), answer->substr(titleAt, second - titleAt), answer->substr(artistAt),
                      answer->substr(0, first) == "playing"};
}

std::optional<PollResult> choosePlayer(std::optional<PollResult> spotify, std::optional<PollResult> music) {
    if (spotify && spotify->isPlaying) return spotify;
    if (music && music->isPlaying) return music;
    return spotify ? std::move(spotify) : std::move(music);
}

}  // namespace morvel
