// What a launch asks of the system, and what becomes of the window that it leads to: recorded traces, and what they
// leave out.
#include "Launcher/PinnedItemLauncher.h"

#include <sstream>

#include "Platform/AXNames.h"
#include "Vectors.h"
#include "sim/Desktop.h"

namespace morvel {

using vectors::Json;

namespace {

/// The launcher over a store and a system that a trace fills. Every process has a New Window item.
class LaunchWorld {
public:
    explicit LaunchWorld(const Json& start) {
        server().displays.clear();
        server().keepsLastSpace = false;  // the traces were recorded with the system's own functions
        for (const Json& active : start["active"]) {
            const SpaceID space{active[1].get<uint64_t>()};
            const ManagedSpace managed{0, space, space};
            server().displays.push_back(
                {sim::SimScreens::uuidOf(DisplayID{active[0].get<uint32_t>()}), {managed}, managed});
        }
        for (const std::string bundle : start["installed"])
            desktop_.workspace().installed[bundle] = "/Applications/" + bundle + ".app";
        desktop_.workspace().onActivate = nullptr;
        desktop_.workspace().onOpenApplication = nullptr;
        desktop_.workspace().onOpenFile = nullptr;
        for (const Json& press : start["press"]) takesPress_[ProcessID{press[0].get<int32_t>()}] = press[1];
        desktop_.accessibility().onAction = [this](sim::ElementID id, std::string_view) {
            return takesPress_[desktop_.accessibility().at(id).pid] ? AXError::Success : AXError::Failure;
        };
        for (const Json& process : start["running"]) run(process[0], process[1]);
        for (const Json& window : start["windows"]) add(window);
        launcher_.emplace(PinnedItemLauncher::System{desktop_.mainLoop(), desktop_.workspace(),
                                                     desktop_.accessibility(), desktop_.screens(), spaceQuery_},
                          store_, [this](WindowID id, const Screen& to) {
                              desktop_.journal().add({"moveWindow " + std::to_string(vectors::number(id)) + " " +
                                                          std::to_string(to.displayID->value),
                                                      {},
                                                      {}});
                          });
    }

    /// One step of a trace; what it led to.
    Json play(const Json& step) {
        desktop_.journal().clear();
        apply(step);
        desktop_.settle();
        Json calls = Json::array();
        for (const sim::Deed& deed : desktop_.journal().deeds()) calls.push_back(call(deed));
        return calls;
    }
    sim::Desktop& desktop() { return desktop_; }

private:
    sim::SimWindowServer& server() { return desktop_.windowServer(); }

    void apply(const Json& step) {
        const std::string what = step[0];
        if (what == "click") launcher_->click(item(step[1]), DisplayID{step[2].get<uint32_t>()});
        if (what == "launchNew") launcher_->launchNewInstance(item(step[1]), DisplayID{step[2].get<uint32_t>()});
        if (what == "run") run(step[1], step[2]);
        if (what == "quit") desktop_.workspace().drop(ProcessID{step[1].get<int32_t>()});
        if (what == "close") store_.apply(event::Removed{vectors::windowID(step[1])});
        if (what == "adv") desktop_.run(std::chrono::milliseconds(step[1].get<int>()));
        if (what == "windows")
            for (const Json& window : step[1]) add(window);
        if (what == "touch" && !store_.windows().value()->empty())
            store_.apply(event::FrameChanged{store_.windows().value()->begin()->first, {0, 0, ++touches_, 1}});
    }

    static PinnedItem item(const Json& described) {
        return described[0] == "app" ? PinnedItem::app(described[1], "") : PinnedItem::folder(described[1], "");
    }

    void run(const Json& pid, const std::string& bundle) {
        const ProcessID process{pid.get<int32_t>()};
        desktop_.workspace().running.push_back({.pid = process, .bundleID = bundle, .localizedName = bundle});
        sim::SimAccessibility& accessibility = desktop_.accessibility();
        const auto bar = accessibility.add({.pid = process,
                                            .attributes = {{std::string(ax::kTitle), std::string("New Window")},
                                                           {std::string(ax::kMenuItemCmdChar), std::string("N")},
                                                           {std::string(ax::kMenuItemCmdModifiers), 0.0}}});
        accessibility.at(accessibility.applicationID(process))
            .attributes.insert_or_assign(std::string(ax::kMenuBar), accessibility.handle(bar));
    }

    void add(const Json& window) {
        WindowSnapshot snapshot;
        snapshot.id = vectors::windowID(window[0]);
        snapshot.pid = ProcessID{window[1].get<int32_t>()};
        snapshot.bundleID = window[2].get<std::string>();
        snapshot.isWindowless = window[4];
        if (!window[3].is_null()) {
            snapshot.cgWindowID = WindowNumber{window[3].get<uint32_t>()};
            for (const Json& space : window[5])
                server().windowSpaces[*snapshot.cgWindowID].insert(SpaceID{space.get<uint64_t>()});
        }
        store_.apply(event::Added{snapshot});
    }

    /// A request as the traces write it.
    Json call(const sim::Deed& deed) {
        std::istringstream words(deed.what);
        std::string what, about, rest;
        words >> what >> about >> rest;
        if (what == "AXPress") return {"press", deed.pid->value, "n", "window"};
        if (what == "activate") return {"activate", deed.pid->value};
        if (what == "openFile") return {"openURL", about};
        if (what == "moveWindow") return {what, std::stoi(about), std::stoi(rest)};
        if (what.starts_with("space")) return {what, std::stoi(about), Json::parse(rest)};
        const std::string bundle = about.substr(14, about.size() - 14 - 4);
        return {"openApp", bundle, deed.what.ends_with(" new"), deed.what.ends_with("activates")};
    }

    sim::Desktop desktop_{sim::twoDisplays()};
    SpaceQuery spaceQuery_{desktop_.windowServer(), desktop_.screens()};
    WindowIDMint mint_{1};
    WindowStore store_{mint_, [](ProcessID) { return true; }};
    std::map<ProcessID, bool> takesPress_;
    double touches_ = 0;
    std::optional<PinnedItemLauncher> launcher_;
};

/// The calls of one step with neighbouring ones about Spaces in the order of their windows, which is not promised.
Json sorted(Json calls) {
    const auto isAboutSpaces = [](const Json& call) { return call[0] == "spaceAdd" || call[0] == "spaceRemove"; };
    for (auto first = calls.begin(); first != calls.end();) {
        const auto last = std::find_if(
            first, calls.end(), [&](const Json& call) { return call[0] != (*first)[0] || !isAboutSpaces(call); });
        std::sort(first, last, [](const Json& a, const Json& b) { return a[1] < b[1]; });
        first = last == first ? first + 1 : last;
    }
    return calls;
}

Json startWithLentWindow() {
    return Json::parse(R"({"active": [[1, 5], [2, 8]], "installed": ["com.a"], "running": [[10, "com.a"]],
                           "press": [[10, false]], "windows": [[1, 10, "com.a", 101, false, [5]]]})");
}
const Json kClick = Json::parse(R"(["click", ["app", "com.a"], 2])");

}  // namespace

TEST(PinnedItemLauncher, RecordedTraces) {
    for (const Json& test : vectors::load("launcher_traces")) {
        LaunchWorld world(test["input"]["start"]);
        Json accepted = test.value("accept", Json::array({test["expected"]}));
        for (Json& result : accepted)
            for (Json& calls : result) calls = sorted(calls);
        Json got = Json::array();
        for (const Json& step : test["input"]["steps"]) got.push_back(sorted(world.play(step)));
        EXPECT_TRUE(std::ranges::count(accepted, got)) << test << "\ngot " << got;
    }
}

TEST(PinnedItemLauncher, AWindowCountsForOneLaunchAlone) {
    LaunchWorld world(startWithLentWindow());
    world.play(kClick);
    world.play(kClick);
    const Json windows = Json::parse(R"(["windows", [[2, 10, "com.a", 102, false, [8]]]])");
    EXPECT_EQ(world.play(windows).back(), Json::parse(R"(["spaceRemove", 101, [8]])"));
    EXPECT_EQ(world.play({"touch"}), Json::array());
    const Json second = Json::parse(R"(["windows", [[3, 10, "com.a", 103, false, [8]]]])");
    EXPECT_EQ(world.play(second).back(), Json::parse(R"(["moveWindow", 3, 2])"));
}

TEST(PinnedItemLauncher, TheWindowOfAnUnpluggedDisplayStaysWhereItIs) {
    LaunchWorld world(startWithLentWindow());
    world.play(kClick);
    world.desktop().unplug(DisplayID{2});
    const Json windows = Json::parse(R"(["windows", [[2, 10, "com.a", 102, false, [5]]]])");
    EXPECT_EQ(world.play(windows), Json::parse(R"([["spaceRemove", 101, [8]]])"));
    EXPECT_EQ(world.play(kClick), Json::array()) << "no such display any more";
}

}  // namespace morvel
