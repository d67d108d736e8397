// What the media players play, and the commands they take.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "UI/Image.h"
#include "Util/Subscription.h"

namespace morvel {

/// What a player plays or has paused.
struct NowPlayingState {
    std::string bundleID;  ///< the player's, as its windows have it
    std::string title;
    std::string artist;
    ui::ImageRef artwork;  ///< null where there is none; compared by identity
    bool isPlaying = false;

    bool operator==(const NowPlayingState&) const = default;
};

enum class TransportCommand { Play, Pause, TogglePlayPause, Next, Previous };

/// Main thread only. A player that cannot be asked plays nothing; a command that fails does nothing.
class NowPlayingPoller {
public:
    virtual ~NowPlayingPoller() = default;

    /// Calls back once, in a later turn, with the state as it is by then, or nothing when nothing plays; not at all
    /// once the poller is gone.
    virtual void poll(std::function<void(std::optional<NowPlayingState>)> callback) = 0;
    /// Sends the command to the player and calls `completion` in a later turn, when it took it or refused.
    virtual void sendCommand(TransportCommand command, const std::string& bundleID,
                             std::function<void()> completion) = 0;

    /// From a poller that is told when something changes: calls `changed` after each change until the token dies, and
    /// needs no asking in between. An empty token: the changes only show when it is asked.
    [[nodiscard]] virtual Subscription observeChanges(std::function<void()>) { return {}; }
};

}  // namespace morvel
