// Learns what Spotify and Music play by running a script against each, off the main thread.
#pragma once

#include <memory>

#include "NowPlaying/PlayerScripts.h"
#include "Platform/MainLoop.h"
#include "Platform/NowPlayingPoller.h"
#include "Platform/ScriptRunner.h"
#include "Platform/WorkQueue.h"
#include "Util/Lifetime.h"

namespace morvel {

/// All scripts run on one serial queue, so that a query and a command never run at the same time; a player that hangs
/// holds up only them. No artwork: the players hand that out in forms of their own.
class AppleScriptPoller : public NowPlayingPoller {
public:
    /// The main loop outlives the poller. The runner is shared with the scripts that still run when the poller goes.
    AppleScriptPoller(std::shared_ptr<ScriptRunner> runner, MainLoop& mainLoop, const MakeWorkQueue& makeWorkQueue);

    void poll(std::function<void(std::optional<NowPlayingState>)> callback) override;
    void sendCommand(TransportCommand command, const std::string& bundleID, std::function<void()> completion) override;

private:
    // Run on the queue.
    static std::optional<PollResult> runQuery(ScriptRunner& runner);
    static std::optional<PollResult> query(ScriptRunner& runner, const ScriptedPlayer& player);
    static void runCommand(ScriptRunner& runner, TransportCommand command, const std::string& bundleID);

    std::shared_ptr<ScriptRunner> runner_;
    MainLoop& mainLoop_;
    Lifetime lifetime_;
    std::unique_ptr<WorkQueue> queue_;
};

}  // namespace morvel
