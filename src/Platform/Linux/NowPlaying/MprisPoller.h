// What the media players of the session play, behind the interface of a poller. Nothing is polled: players announce.
#pragma once

#include <memory>
#include <optional>

#include "Platform/Linux/NowPlaying/MprisPlayers.h"
#include "Platform/Linux/NowPlaying/PlayerChoice.h"
#include "Platform/Linux/System/ThreadQueue.h"
#include "Platform/MainLoop.h"
#include "Platform/Workspace.h"
#include "Util/Signal.h"

namespace morvel::x11 {

/// Listens to the session bus while somebody observes the changes, and has nothing to tell otherwise.
class MprisPoller : public NowPlayingPoller {
public:
    /// Both outlive the poller.
    MprisPoller(MainLoop& mainLoop, Workspace& workspace) : mainLoop_(mainLoop), workspace_(workspace) {}

    void poll(std::function<void(std::optional<NowPlayingState>)> callback) override;
    void sendCommand(TransportCommand command, const std::string& bundleID, std::function<void()> completion) override;
    /// For one observer at a time.
    [[nodiscard]] Subscription observeChanges(std::function<void()> changed) override;

private:
    /// The picture of the track that is played.
    struct Artwork {
        std::string path;
        std::string title;  // some players write each track's picture to the same file
        ui::ImageRef image;
        bool operator==(const Artwork& other) const { return path == other.path && title == other.title; }
    };
    struct Choice {
        MprisPlayer* player;
        std::string bundleID;
    };

    void listen(std::function<void()> changed);
    void stopListening();
    std::optional<Choice> choose() const;
    std::optional<NowPlayingState> state();
    ui::ImageRef artworkOf(const MprisValues& values);
    void loadArtwork();

    MainLoop& mainLoop_;
    Workspace& workspace_;
    std::function<void()> changed_;  // set while somebody observes
    std::unique_ptr<MprisPlayers> players_;
    Subscriptions applications_;
    Artwork artwork_;  // what is wanted; without an image until it is loaded
    bool isLoading_ = false;
    std::unique_ptr<ThreadQueue> loader_;  // once it was needed
    Lifetime lifetime_;
};

}  // namespace morvel::x11
