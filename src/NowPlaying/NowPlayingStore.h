// Keeps what is playing and tells the bars when it changes.
#pragma once

#include <optional>

#include "Platform/MainLoop.h"
#include "Platform/NowPlayingPoller.h"
#include "Util/Lifetime.h"
#include "Util/Published.h"

namespace morvel {

/// Main thread only. Asks every two seconds, and skips turns while an answer is out, so that a slow player costs no
/// more than a quick one; a poller that is told of changes is asked only after them.
class NowPlayingStore {
public:
    /// Both outlive the store. A null poller: nothing ever plays here.
    NowPlayingStore(NowPlayingPoller* poller, MainLoop& mainLoop) : poller_(poller), mainLoop_(mainLoop) {}
    NowPlayingStore(const NowPlayingStore&) = delete;
    NowPlayingStore& operator=(const NowPlayingStore&) = delete;

    /// Empty while nothing plays and while stopped. Published on change alone.
    const Published<std::optional<NowPlayingState>>& state() const { return state_; }

    void start();
    /// An answer that is still out is published once more when it comes.
    void stop();
    bool isStarted() const { return isStarted_; }

    /// To the player of the current state, if there is one.
    void send(TransportCommand command);

private:
    void pollNow();
    void polled(std::optional<NowPlayingState> state);

    NowPlayingPoller* poller_;
    MainLoop& mainLoop_;
    Published<std::optional<NowPlayingState>> state_;
    bool isStarted_ = false;
    bool isPollInFlight_ = false;
    Timer pollTimer_;
    Subscription changes_;
    Lifetime lifetime_;
};

}  // namespace morvel
