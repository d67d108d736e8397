#include "NowPlaying/NowPlayingStore.h"

#include <utility>

namespace morvel {

namespace {

constexpr Duration kPollInterval = std::chrono::seconds(2);

}  // namespace

void NowPlayingStore::start() {
    if (!poller_ || std::exchange(isStarted_, true)) return;
    changes_ = poller_->observeChanges([this] { pollNow(); });
    pollNow();
    if (!changes_) pollTimer_ = mainLoop_.every(kPollInterval, kPollInterval, [this] { pollNow(); });
}

void NowPlayingStore::stop() {
    isStarted_ = false;
    pollTimer_.reset();
    changes_.reset();
    if (state_.value()) state_.set(std::nullopt);
}

void NowPlayingStore::pollNow() {
    if (std::exchange(isPollInFlight_, true)) return;
    poller_->poll(lifetime_.whileAlive([this](std::optional<NowPlayingState> state) { polled(std::move(state)); }));
}

void NowPlayingStore::polled(std::optional<NowPlayingState> state) {
    isPollInFlight_ = false;
    if (state != state_.value()) state_.set(std::move(state));
}

void NowPlayingStore::send(TransportCommand command) {
    if (!state_.value()) return;
    poller_->sendCommand(command, state_.value()->bundleID, lifetime_.whileAlive([this] {
        // After a stop nobody would take back what this finds.
        if (isStarted_ || state_.value()) pollNow();
    }));
}

}  // namespace morvel
