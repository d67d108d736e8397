#include "Platform/Linux/NowPlaying/PlayerChoice.h"

#include <tuple>

#include "Platform/Linux/Applications/EntryCandidates.h"

namespace morvel::x11 {

namespace {

/// "vlc" of "org.mpris.MediaPlayer2.vlc.instance42".
std::string_view programOf(std::string_view busName) {
    constexpr std::string_view kPrefix = "org.mpris.MediaPlayer2.";
    if (!busName.starts_with(kPrefix)) return {};
    busName.remove_prefix(kPrefix.size());
    return busName.substr(0, busName.find('.'));
}

bool isSame(std::string_view name, std::string_view other) {
    return !name.empty() && foldCase(name) == foldCase(other);
}

/// Whether a program's short name is the last part of an identifier such as "org.videolan.vlc".
bool isLastPart(std::string_view program, std::string_view bundleID) {
    return isSame(program, bundleID.substr(bundleID.rfind('.') + 1));
}

}  // namespace

std::optional<std::string> applicationOf(const KnownPlayer& player,
                                         const std::vector<RunningApplication>& applications) {
    const auto first = [&](const auto& matches) -> std::optional<std::string> {
        for (const RunningApplication& application : applications)
            if (application.bundleID && matches(application)) return application.bundleID;
        return std::nullopt;
    };
    auto found = first([&](const RunningApplication& a) { return player.pid.value > 0 && a.pid == player.pid; });
    if (!found) found = first([&](const auto& a) { return isSame(player.values.desktopEntry, *a.bundleID); });
    if (!found) found = first([&](const auto& a) { return isLastPart(programOf(player.busName), *a.bundleID); });
    if (!found)
        found = first([&](const auto& a) { return isSame(player.values.identity, a.localizedName.value_or("")); });
    return found;
}

std::optional<ChosenPlayer> chooseKnownPlayer(const std::vector<KnownPlayer>& players,
                                              const std::vector<RunningApplication>& applications) {
    std::optional<ChosenPlayer> best;
    const auto rank = [&](size_t i) {
        return std::tuple(players[i].values.status == PlaybackStatus::Playing, players[i].statusChange);
    };
    for (size_t i = 0; i < players.size(); ++i) {
        if (players[i].values.status == PlaybackStatus::Stopped) continue;
        if (best && rank(i) <= rank(best->index)) continue;
        if (auto bundleID = applicationOf(players[i], applications)) best = ChosenPlayer{i, *std::move(bundleID)};
    }
    return best;
}

}  // namespace morvel::x11
