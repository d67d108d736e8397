// The recorded scripts, answers and traces of what is playing.
#include "Bar/Buttons/WindowButton.h"
#include "NowPlaying/NowPlayingStore.h"
#include "NowPlaying/PlayerScripts.h"
#include "Vectors.h"
#include "sim/FakeMainLoop.h"
#include "sim/SimIcons.h"
#include "sim/SimToolkit.h"

namespace morvel {
namespace {

using vectors::Json;

const std::map<std::string, TransportCommand> kCommands = {{"play", TransportCommand::Play},
                                                           {"pause", TransportCommand::Pause},
                                                           {"togglePlayPause", TransportCommand::TogglePlayPause},
                                                           {"next", TransportCommand::Next},
                                                           {"previous", TransportCommand::Previous}};

TEST(NowPlayingVectors, Scripts) {
    vectors::walk("nowplaying_scripts", [](const Json& input) -> Json {
        if (input["fn"] == "query") return playerQueryScript(input["app"].get<std::string>());
        const auto script = playerCommandScript(kCommands.at(input["command"]), input["bundle"].get<std::string>());
        return script ? Json(*script) : Json();
    });
}

TEST(NowPlayingVectors, Answers) {
    vectors::walk("nowplaying_results", [](const Json& input) -> Json {
        if (input["fn"] == "choose") {
            const auto result = [&](const char* player) -> std::optional<PollResult> {
                if (input[player].is_null()) return std::nullopt;
                return PollResult{player, "", "", input[player]};
            };
            const auto chosen = choosePlayer(result("spotify"), result("music"));
            return chosen ? Json(chosen->bundleID) : Json();
        }
        const auto parsed = parsePlayerAnswer("player", vectors::optional<std::string>(input["text"]));
        if (!parsed) return nullptr;
        EXPECT_EQ(parsed->bundleID, "player");
        return {{"isPlaying", parsed->isPlaying}, {"title", parsed->title}, {"artist", parsed->artist}};
    });
}

/// Keeps what it is asked until a test answers.
class HeldPoller : public NowPlayingPoller {
public:
    explicit HeldPoller(Json& journal) : journal_(journal) {}

    void poll(std::function<void(std::optional<NowPlayingState>)> callback) override {
        journal_.push_back({"poll"});
        callbacks.push_back(std::move(callback));
    }
    void sendCommand(TransportCommand command, const std::string& bundleID, std::function<void()> completion) override {
        for (const auto& [name, value] : kCommands)
            if (value == command) journal_.push_back({"command", name, bundleID});
        completions.push_back(std::move(completion));
    }

    std::vector<std::function<void(std::optional<NowPlayingState>)>> callbacks;
    std::vector<std::function<void()>> completions;

private:
    Json& journal_;
};

template <class Call>
Call takeFirst(std::vector<Call>& calls) {
    Call first = calls.front();
    calls.erase(calls.begin());
    return first;
}

TEST(NowPlayingVectors, Store) {
    vectors::walk("nowplaying_traces", [](const Json& input) -> Json {
        Json journal = Json::array();
        HeldPoller poller(journal);
        sim::FakeMainLoop loop;
        NowPlayingStore store(&poller, loop);
        const Subscription listening = store.state().subscribe(
            [&](const std::optional<NowPlayingState>& state) {
                Json told;
                if (state) told = {state->bundleID, state->title, state->artist, state->isPlaying};
                journal.push_back({"publish", told});
            },
            Current::Skip);
        Json steps = Json::array();
        for (const Json& event : input) {
            journal.clear();
            const std::string what = event[0];
            if (what == "start") store.start();
            if (what == "stop") store.stop();
            if (what == "send") store.send(kCommands.at(event[1]));
            if (what == "sent" && !poller.completions.empty()) takeFirst(poller.completions)();
            if (what == "adv") loop.advance(std::chrono::milliseconds(event[1].get<int>()));
            if (what == "result" && !poller.callbacks.empty()) {
                std::optional<NowPlayingState> state;
                if (const Json& s = event[1]; !s.is_null()) state = {s[0], s[1], s[2], nullptr, s[3]};
                takeFirst(poller.callbacks)(state);
            }
            steps.push_back(journal.is_null() ? Json::array() : journal);
        }
        return steps;
    });
}

TEST(NowPlayingVectors, BadgeHover) {
    vectors::walk("badge_hover", [](const Json& input) -> Json {
        sim::FakeMainLoop loop;
        sim::SimToolkit toolkit(loop);
        sim::SimIcons icons;
        IconCache cache(icons, loop);
        std::optional<std::string> player;
        int opened = 0;
        WindowSnapshot window;
        window.bundleID = input["bundle"];
        WindowButtonBindings b;
        b.otherScreensProvider = [] { return std::vector<OtherScreen>(); };
        b.widthProvider = [] { return std::nullopt; };
        b.bordersProvider = [] { return false; };
        b.activeStyleProvider = [] { return ActiveButtonStyle::Pill; };
        b.accentProvider = [] { return ui::kControlAccentColor; };
        b.barEdgeProvider = [] { return MorvelEdge::Bottom; };
        b.nowPlayingControls = {
            &loop, [&](ui::View&, const std::string& bundleID) { opened += player == bundleID; }, {}};
        WindowButton button({toolkit, icons, cache}, window, false, b);
        Json steps = Json::array();
        for (const Json& event : input["events"]) {
            opened = 0;
            const std::string what = event[0];
            if (what == "badge") button.setNowPlaying(event[1]);
            if (what == "state") player = vectors::optional<std::string>(event[1]);
            if (what == "enter") button.mouseEntered({});
            if (what == "exit") button.mouseExited();
            if (what == "down") button.mouseDown({ui::MouseButton::Left, {event[1], event[2]}});
            if (what == "drag") button.mouseDragged({ui::MouseButton::Left, {event[1], event[2]}});
            if (what == "up") button.mouseUp({ui::MouseButton::Left, {}});
            if (what == "right") button.rightMouseDown({ui::MouseButton::Right, {}});
            if (what == "adv") loop.advance(std::chrono::milliseconds(event[1].get<int>()));
            steps.push_back(opened);
        }
        return steps;
    });
}

}  // namespace
}  // namespace morvel
