#include "NowPlaying/AppleScriptPoller.h"

#include <utility>

#include "Util/BundleIdentifier.h"

namespace morvel {

namespace {

std::optional<NowPlayingState> stateFrom(std::optional<PollResult> result) {
    if (!result) return std::nullopt;
    return NowPlayingState{std::move(result->bundleID), std::move(result->title), std::move(result->artist), nullptr,
                           result->isPlaying};
}

}  // namespace

AppleScriptPoller::AppleScriptPoller(std::shared_ptr<ScriptRunner> runner, MainLoop& mainLoop,
                                     const MakeWorkQueue& makeWorkQueue)
    : runner_(std::move(runner)),
      mainLoop_(mainLoop),
      queue_(makeWorkQueue(std::string(kBundleIdentifier) + ".AppleScriptPoller")) {}

void AppleScriptPoller::poll(std::function<void(std::optional<NowPlayingState>)> callback) {
    queue_->run([runner = runner_, &mainLoop = mainLoop_, callback = lifetime_.whileAlive(std::move(callback))] {
        mainLoop.post([callback, state = stateFrom(runQuery(*runner))] { callback(state); });
    });
}

void AppleScriptPoller::sendCommand(TransportCommand command, const std::string& bundleID,
                                    std::function<void()> completion) {
    queue_->run([runner = runner_, &mainLoop = mainLoop_, command, bundleID,
                 completion = lifetime_.whileAlive(std::move(completion))] {
        runCommand(*runner, command, bundleID);
        mainLoop.post(completion);
    });
}

std::optional<PollResult> AppleScriptPoller::runQuery(ScriptRunner& runner) {
    auto spotify = query(runner, kSpotify);
    auto music = query(runner, kMusic);
    return choosePlayer(std::move(spotify), std::move(music));
}

std::optional<PollResult> AppleScriptPoller::query(ScriptRunner& runner, const ScriptedPlayer& player) {
    if (!runner.isRunning(std::string(player.bundleID))) return std::nullopt;
    return parsePlayerAnswer(player.bundleID, runner.run(playerQueryScript(player.appName)));
}

void AppleScriptPoller::runCommand(ScriptRunner& runner, TransportCommand command, const std::string& bundleID) {
    if (const auto script = playerCommandScript(command, bundleID)) runner.run(*script);
}

}  // namespace morvel
