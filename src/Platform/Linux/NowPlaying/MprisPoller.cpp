#include "Platform/Linux/NowPlaying/MprisPoller.h"

#include <utility>

#include "Platform/Linux/Icons/ImageLoading.h"

namespace morvel::x11 {

namespace {

/// In pixels: what the controls show, on dense displays too.
constexpr int kArtworkSize = 64;

}  // namespace

Subscription MprisPoller::observeChanges(std::function<void()> changed) {
    listen(std::move(changed));
    return Subscription(lifetime_.whileAlive([this] { stopListening(); }));
}

void MprisPoller::listen(std::function<void()> changed) {
    changed_ = std::move(changed);
    const auto tell = [this] {
        if (const auto told = changed_) told();
    };
    players_ = std::make_unique<MprisPlayers>(tell);
    // A player may be heard of before its first window is.
    const auto applicationsChanged = [tell](const RunningApplication&) { tell(); };
    applications_.clear();
    applications_.push_back(workspace_.observeLaunched(applicationsChanged));
    applications_.push_back(workspace_.observeTerminated(applicationsChanged));
}

void MprisPoller::stopListening() {
    changed_ = nullptr;
    applications_.clear();
    players_.reset();
    artwork_ = {};
    loader_.reset();
    isLoading_ = false;
}

void MprisPoller::poll(std::function<void(std::optional<NowPlayingState>)> callback) {
    mainLoop_.post(lifetime_.whileAlive([this, callback = std::move(callback)] { callback(state()); }));
}

std::optional<MprisPoller::Choice> MprisPoller::choose() const {
    if (!players_ || players_->all().empty()) return std::nullopt;
    std::vector<KnownPlayer> known;
    std::vector<MprisPlayer*> players;
    for (const auto& [owner, player] : players_->all()) {
        known.push_back({player->busName(), player->pid(), player->values(), player->statusChange()});
        players.push_back(player.get());
    }
    auto chosen = chooseKnownPlayer(known, workspace_.runningApplications());
    if (!chosen) return std::nullopt;
    return Choice{players[chosen->index], std::move(chosen->bundleID)};
}

std::optional<NowPlayingState> MprisPoller::state() {
    const auto choice = choose();
    if (!choice) return std::nullopt;
    const MprisValues& values = choice->player->values();
    return NowPlayingState{choice->bundleID, values.title, values.artist, artworkOf(values),
                           values.status == PlaybackStatus::Playing};
}

ui::ImageRef MprisPoller::artworkOf(const MprisValues& values) {
    Artwork wanted{values.artPath, values.title, nullptr};
    if (wanted == artwork_) return artwork_.image;
    // Until the new picture is there the former one of the same file stays: most often it is the album's.
    if (wanted.path == artwork_.path) wanted.image = artwork_.image;
    artwork_ = std::move(wanted);
    if (!artwork_.path.empty()) loadArtwork();
    return artwork_.image;
}

// On a thread: the file may be large, or on a disk that does not answer. One at a time, however often tracks change.
void MprisPoller::loadArtwork() {
    if (std::exchange(isLoading_, true)) return;
    if (!loader_) loader_ = std::make_unique<ThreadQueue>();
    const auto loaded = lifetime_.whileAlive([this](const Artwork& artwork) {
        isLoading_ = false;
        if (artwork == artwork_) {
            artwork_.image = artwork.image;
            if (const auto told = changed_) told();
        } else if (!artwork_.path.empty()) {
            loadArtwork();
        }
    });
    loader_->run([&mainLoop = mainLoop_, loaded, artwork = artwork_]() mutable {
        artwork.image = loadImage(artwork.path, kArtworkSize);
        mainLoop.post([loaded, artwork] { loaded(artwork); });
    });
}

void MprisPoller::sendCommand(TransportCommand command, const std::string& bundleID, std::function<void()> completion) {
    const auto choice = choose();
    if (!choice || choice->bundleID != bundleID) return mainLoop_.post(std::move(completion));
    choice->player->send(command, std::move(completion));
}

}  // namespace morvel::x11
