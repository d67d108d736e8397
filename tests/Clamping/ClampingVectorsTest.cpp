#include "Clamping/ClampingMath.h"
#include "Clamping/WindowClamper.h"
#include "Vectors.h"
#include "sim/FakeDefaults.h"
#include "sim/FakeMainLoop.h"
#include "sim/SimScreens.h"
#include "sim/SimWorkspace.h"

namespace morvel {
namespace {

using vectors::Json;
using vectors::rect;

const auto& edgeOf = vectors::choice<MorvelEdge>;

template <class Space>
Json jsonOf(const std::optional<Rect<Space>>& r) {
    return r ? vectors::json(*r) : Json();
}
template <class Space>
std::optional<Rect<Space>> optionalRect(const Json& r) {
    return r.is_null() ? std::nullopt : std::optional(rect<Space>(r));
}

TEST(ClampingMath, RecordedCases) {
    vectors::walk("clamp_math", [](const Json& in) -> Json {
        if (in["fn"] == "reservedRect") {
            const Json& settings = in["settings"];
            return jsonOf(ClampingMath::reservedRect(rect<ScreenSpace>(in["screen"]), edgeOf(in["edge"]),
                                                     in["barHeight"],
                                                     settings["compactAtTop"] && settings["matchMenuBarHeight"]));
        }
        if (in["fn"] == "corrected") {
            return jsonOf(ClampingMath::corrected(rect<ScreenSpace>(in["frame"]), rect<ScreenSpace>(in["screen"]),
                                                  optionalRect<ScreenSpace>(in["reservedRect"]), edgeOf(in["edge"])));
        }
        if (in["fn"] == "approx")
            return ClampingMath::framesApproxEqual(rect<AXSpace>(in["a"]), rect<AXSpace>(in["b"]), in["tolerance"]);
        return jsonOf(ClampingMath::restoreTarget(rect<AXSpace>(in["current"]), optionalRect<AXSpace>(in["original"]),
                                                  in["previouslyClamped"], in["tolerance"]));
    });
}

/// A clamper over windows that answer each write as a recorded case says. All frames of the cases are in ScreenSpace.
class ClampTrace {
public:
    explicit ClampTrace(const Json& start) {
        for (const Json& frame : start["screens"])
            screens_.list.push_back({DisplayID{uint32_t(screens_.list.size() + 1)}, "", rect<ScreenSpace>(frame), {}});
        settings_.compactAtTop.set(false);
        settings_.clampWindows.set(start["clamp"]);
        settings_.barEdge.set(edgeOf(start["edge"]));
        settings_.barHeight.set(start["height"]);
        setBlacklist(start["blacklist"]);
        clamper_.start();
        loop_.settle();
    }

    Json run(const Json& steps) {
        Json writes = Json::array();
        for (const Json& step : steps) {
            written_.clear();
            perform(step);
            Json inOrder = Json::object();
            for (const auto& [id, frame] : written_) inOrder[std::to_string(id)].push_back(vectors::json(frame));
            writes.push_back(inOrder);
        }
        Json frames = Json::object();
        for (const auto& [id, window] : *store_.windows().value())
            frames[std::to_string(id.low)] = vectors::json(toScreen(window.frame, mainHeight()));
        return {{"writes", writes}, {"frames", frames}};
    }

private:
    double mainHeight() const { return screens_.firstHeight(); }

    void perform(const Json& step) {
        const std::string& what = step[0].get_ref<const std::string&>();
        if (what == "adv") return advance(std::chrono::milliseconds(step[1].get<int64_t>()));
        if (what == "clamp") settings_.clampWindows.set(step[1]);
        if (what == "edge") settings_.barEdge.set(edgeOf(step[1]));
        if (what == "height") settings_.barHeight.set(step[1]);
        if (what == "blacklist") setBlacklist(step[1]);
        if (what == "touch") store_.apply(event::TitleChanged{touched(), "title " + std::to_string(++touches_)});
        if (what == "win") open(vectors::windowID(step[1]), step[2], step[3]);
        if (what == "frame") place(vectors::windowID(step[1]), rect<ScreenSpace>(step[2]));
        if (what == "fs") store_.apply(event::FullscreenChanged{vectors::windowID(step[1]), step[2]});
        if (what == "close") store_.apply(event::Removed{vectors::windowID(step[1])});
        answerWrites();
    }

    /// Stops at each moment at which a timer may be due, for the windows to answer.
    void advance(Duration time) {
        for (constexpr Duration kStep = std::chrono::milliseconds(125); time > Duration{}; time -= kStep) {
            loop_.advance(std::min(time, kStep));
            answerWrites();
        }
    }

    void open(WindowID id, const Json& window, const Json& reply) {
        replies_[id] = reply;
        WindowSnapshot snapshot;
        snapshot.id = id;
        snapshot.pid = ProcessID{1};
        snapshot.frame = toAX(rect<ScreenSpace>(window["frame"]), mainHeight());
        snapshot.isFullscreen = window["fs"];
        if (window["bundle"].is_string()) snapshot.bundleID = window["bundle"];
        store_.apply(event::Added{snapshot});
    }
    void place(WindowID id, const Rect<ScreenSpace>& frame) {
        store_.apply(event::FrameChanged{id, toAX(frame, mainHeight())});
    }
    WindowID touched() const {
        const WindowMap& windows = *store_.windows().value();
        return windows.empty() ? WindowID{} : windows.begin()->first;
    }
    void setBlacklist(const Json& bundleIDs) {
        const auto former = blacklist_.bundleIDs().value();
        for (const std::string& bundleID : former)
            if (std::ranges::count(bundleIDs, Json(bundleID)) == 0) blacklist_.remove(bundleID);
        for (const Json& bundleID : bundleIDs) blacklist_.add(bundleID);
    }

    void answerWrites() {
        constexpr int kMostRounds = 6;
        loop_.settle();
        loop_.advance({});
        for (int round = 0; round < kMostRounds && !unanswered_.empty(); ++round) {
            for (const auto& [id, frame] : std::exchange(unanswered_, {})) {
                if (!store_.windows().value()->contains(id)) continue;
                const Json& reply = replies_.at(id);
                if (reply == "ignore") continue;
                Rect<ScreenSpace> taken = frame;
                if (reply.is_array()) {
                    taken = {frame.x + reply[0].get<double>(), frame.y + reply[1].get<double>(),
                             frame.width + reply[2].get<double>(), frame.height + reply[3].get<double>()};
                }
                place(id, taken);
            }
            loop_.advance({});
        }
    }

    sim::Journal journal_;
    sim::FakeMainLoop loop_;
    sim::SimScreens screens_;
    sim::SimWorkspace workspace_{journal_};
    sim::FakeDefaults defaults_;
    SettingsStore settings_{defaults_};
    ClampingBlacklist blacklist_{defaults_};
    WindowIDMint mint_{1};
    WindowStore store_{mint_, [](ProcessID) { return true; }};
    std::map<WindowID, Json> replies_;
    std::vector<std::pair<uint64_t, Rect<ScreenSpace>>> written_;  // in this step
    std::map<WindowID, Rect<ScreenSpace>> unanswered_;
    int touches_ = 0;
    WindowClamper clamper_{{loop_, screens_, workspace_, [] { return false; },
                            [this](WindowID id, const Rect<AXSpace>& frame) {
                                unanswered_[id] = toScreen(frame, mainHeight());
                                written_.emplace_back(id.low, unanswered_[id]);
                            }},
                           store_,
                           blacklist_,
                           settings_};
};

TEST(WindowClamper, RecordedTraces) {
    vectors::walk("clamp_traces", [](const Json& in) { return ClampTrace(in["start"]).run(in["steps"]); });
}

}  // namespace
}  // namespace morvel
