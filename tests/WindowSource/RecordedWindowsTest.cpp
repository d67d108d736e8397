// The recorded cases of observing, admitting and acting on windows.
#include <map>

#include "Platform/AXNames.h"
#include "Vectors.h"
#include "WindowSource/WatchedDesktop.h"

namespace morvel {
namespace {

using vectors::Json;

ProcessID pidOf(const Json& value) {
    return ProcessID{value.get<int32_t>()};
}

Json jsonOf(const std::optional<std::string>& text) {
    return text ? Json(*text) : Json();
}

/// Plays recorded traces of applications, elements and notices to an observer manager and writes down the events. The
/// traces know subscriptions on applications alone.
class TraceWorld {
public:
    /// One step of a trace; returns the events that it led to.
    Json play(const Json& step) {
        events_ = Json::array();
        apply(step);
        desktop_.settle();
        return events_;
    }

    /// Makes the element out of the attributes of the recorded cases, on the defaults.
    void element(int number, const Json& attributes) {
        elements_[number] = desktop_.accessibility().add({.pid = pidOf(attributes.value("pid", Json(10)))});
        Json all = {{"role", "AXWindow"}, {"subrole", "AXStandardWindow"},
                    {"title", "t"},       {"pos", {10, 20}},
                    {"size", {300, 200}}, {"fs", false},
                    {"close", true}};
        all.update(attributes);
        change(number, all);
    }

private:
    void apply(const Json& step) {
        const std::string what = step[0];
        auto& accessibility = desktop_.accessibility();
        auto& workspace = desktop_.workspace();
        if (what == "start") return desktop_.manager().start();
        if (what == "adv") return desktop_.run(std::chrono::milliseconds(step[1].get<int64_t>()));
        if (what == "notify") {
            const bool isApplication = step[1] == ax::kApplicationActivated;
            return accessibility.notify(
                isApplication ? accessibility.applicationID(pidOf(step[2])) : elements_.at(step[2].get<int>()),
                step[1].get<std::string>());
        }
        if (what == "el") return element(step[1], step[2]);
        if (what == "attr") return change(step[1], step[2]);
        const ProcessID pid = pidOf(step[1]);
        if (what == "proc") return process(pid, step[2]);
        if (what == "axwindows") return elementsOf(pid, ax::kWindows, step[2]);
        if (what == "axfocused") return elementsOf(pid, ax::kFocusedWindow, step[2]);
        if (what == "fail") {
            for (const auto& [name, times] : step[2].items()) accessibility.process(pid).refusals[name] = times;
            return;
        }
        const auto app = workspace.runningApplication(pid);
        ASSERT_TRUE(app) << step;
        if (what == "launch") return workspace.launched.emit(*app);
        workspace.drop(pid);
        if (what == "terminated") return workspace.terminated.emit(*app);
        ASSERT_EQ(what, "gone");
    }

    void process(ProcessID pid, const Json& description) {
        constexpr ActivationPolicy kPolicies[] = {ActivationPolicy::Regular, ActivationPolicy::Accessory,
                                                  ActivationPolicy::Prohibited};
        desktop_.workspace().drop(pid);
        desktop_.workspace().running.push_back({.pid = pid,
                                                .instance = description["obj"],
                                                .bundleID = vectors::optional<std::string>(description["bundle"]),
                                                .localizedName = vectors::optional<std::string>(description["name"]),
                                                .policy = kPolicies[description.value("policy", 0)]});
        auto& process = desktop_.accessibility().process(pid);
        process.onlyApplicationSubscriptions = true;
        process.refusesObserver = description.value("observerFails", false);
    }

    void change(int number, const Json& attributes) {
        // The number comes first, because the layer is listed under it.
        if (attributes.contains("num")) changeOne(number, "num", attributes["num"]);
        for (const auto& [key, value] : attributes.items())
            if (key != "num" && key != "pid") changeOne(number, key, value);
    }

    void changeOne(int number, const std::string& key, const Json& value) {
        static const std::map<std::string, std::string_view> kNames = {
            {"role", ax::kRole}, {"subrole", ax::kSubrole}, {"title", ax::kTitle},      {"pos", ax::kPosition},
            {"size", ax::kSize}, {"fs", ax::kFullScreen},   {"close", ax::kCloseButton}};
        const sim::ElementID id = elements_.at(number);
        sim::SimElement& target = desktop_.accessibility().at(id);
        std::optional<AXValue> read;
        if (key == "num") {
            target.number = value.is_null() ? std::nullopt : std::optional(WindowNumber{value.get<uint32_t>()});
        } else if (key == "layer") {
            if (target.number && !value.is_null())
                desktop_.windowServer().windows.push_back({*target.number, target.pid, value.get<int>(), {}, "", ""});
        } else if (key == "close") {
            if (value == true) read = desktop_.accessibility().handle(id);
        } else if (key == "pos" && value.is_array()) {
            read = Point<AXSpace>{value[0], value[1]};
        } else if (key == "size" && value.is_array()) {
            read = Size{value[0], value[1]};
        } else if (value.is_boolean()) {
            read = value.get<bool>();
        } else if (value.is_string()) {
            read = value.get<std::string>();
        }
        if (kNames.contains(key)) set(id, kNames.at(key), read);
    }

    void set(sim::ElementID id, std::string_view attribute, std::optional<AXValue> value) {
        auto& attributes = desktop_.accessibility().at(id).attributes;
        attributes.erase(std::string(attribute));
        if (value) attributes.emplace(attribute, std::move(*value));
    }

    void elementsOf(ProcessID pid, std::string_view attribute, const Json& numbers) {
        std::optional<AXValue> value;
        const auto handle = [&](const Json& n) { return desktop_.accessibility().handle(elements_.at(n.get<int>())); };
        if (numbers.is_array()) {
            std::vector<AXElement> list;
            for (const Json& number : numbers) list.push_back(handle(number));
            value = list;
        } else if (!numbers.is_null()) {
            value = handle(numbers);
        }
        set(desktop_.accessibility().applicationID(pid), attribute, value);
    }

    Json nameOf(const std::optional<WindowID>& id) {
        if (!id) return {};
        return names_.try_emplace(*id, "w" + std::to_string(names_.size() + 1)).first->second;
    }

    Json told(const WindowEvent& event) {
        struct Teller {
            TraceWorld& world;
            Json operator()(const event::Added& e) const {
                const WindowSnapshot& s = e.snapshot;
                EXPECT_FALSE(s.isWindowless);
                return {"added",
                        {{"id", world.nameOf(s.id)},
                         {"pid", s.pid.value},
                         {"num", s.cgWindowID ? Json(s.cgWindowID->value) : Json()},
                         {"bundle", jsonOf(s.bundleID)},
                         {"app", s.appName},
                         {"title", s.title},
                         {"frame", vectors::json(s.frame)},
                         {"fs", s.isFullscreen}}};
            }
            Json operator()(const event::Removed& e) const { return {"removed", world.nameOf(e.id)}; }
            Json operator()(const event::TitleChanged& e) const { return {"title", world.nameOf(e.id), e.title}; }
            Json operator()(const event::FrameChanged& e) const {
                return {"frame", world.nameOf(e.id), vectors::json(e.frame)};
            }
            Json operator()(const event::FullscreenChanged& e) const {
                return {"fs", world.nameOf(e.id), e.isFullscreen};
            }
            Json operator()(const event::Focused& e) const { return {"focused", world.nameOf(e.id)}; }
            Json operator()(const event::AppTerminated& e) const { return {"terminated", e.pid.value}; }
            Json operator()(const event::AppBecameWindowless& e) const {
                return {"windowless", e.pid.value, jsonOf(e.bundleID), e.appName};
            }
            Json operator()(const event::AppLostLastWindow& e) const {
                return {"lostLast", world.nameOf(e.removedID), e.pid.value, jsonOf(e.bundleID), e.appName};
            }
            Json operator()(const event::AppGotFirstWindow& e) const { return {"gotFirst", e.pid.value}; }
        };
        return std::visit(Teller{*this}, event);
    }

    WatchedDesktop desktop_;
    std::map<int, sim::ElementID> elements_;
    std::map<WindowID, std::string> names_;
    Json events_ = Json::array();
    Subscription recording_ =
        desktop_.store().observeEvents([this](const WindowEvent& event) { events_.push_back(told(event)); });
};

TEST(RecordedWindows, ObserverTraces) {
    vectors::walk("observer_traces", [](const Json& steps) {
        TraceWorld world;
        Json told = Json::array();
        for (const Json& step : steps) told.push_back(world.play(step));
        return told;
    });
}

TEST(RecordedWindows, Admission) {
    vectors::walk("window_admission", [](const Json& attributes) {
        TraceWorld world;
        world.play({"proc", 10, {{"bundle", "com.a"}, {"name", "Alpha"}, {"obj", 1}}});
        world.element(1, attributes);
        world.play({"axwindows", 10, {1}});
        Json admitted;
        for (const Json& event : world.play(Json::array({"start"})))
            if (event[0] == "added")
                admitted = {{"title", event[1]["title"]}, {"frame", event[1]["frame"]}, {"fs", event[1]["fs"]}};
        return admitted;
    });
}

Json click(const Json& input) {
    WatchedDesktop desktop;
    sim::SimApp& app = desktop.launch("Editor");
    sim::SimWindow& window = app.open();
    sim::SimWindow& other = app.open();
    desktop.start();
    if (input["isFocusedWindow"] == true) window.focus();
    if (input["isFocusedWindow"] == false) other.focus();
    if (input["appActive"] == false) desktop.launch("Other").open().focus();
    if (input["minimized"].is_null()) window.failReading(ax::kMinimized);
    if (input["minimized"] == true)
        desktop.accessibility().at(window.element()).attributes.insert_or_assign("AXMinimized", true);
    desktop.settle();
    desktop.journal().clear();
    desktop.manager().clickWindow(desktop.idOf(window));
    std::vector<std::string> done = desktop.journal().texts();
    if (done.size() > 1 && done[0] == "activate" && done[1] == "activate") done.erase(done.begin());
    return done;
}

Json move(const Json& input) {
    WatchedDesktop desktop(sim::oneDisplay(1000, input["firstScreenHeight"]));
    sim::SimWindow& window = desktop.launch("Editor").open({.width = input["size"][0], .height = input["size"][1]});
    desktop.start();
    desktop.manager().moveWindow(desktop.idOf(window),
                                 {DisplayID{2}, "", vectors::rect<ScreenSpace>(input["screen"]), {}});
    EXPECT_EQ(window.frame().size(), (Size{input["size"][0], input["size"][1]})) << "the size is kept";
    return {window.frame().x, window.frame().y};
}

TEST(RecordedWindows, Actions) {
    vectors::walk("window_actions",
                  [](const Json& input) { return input["fn"] == "click" ? click(input) : move(input); });
}

}  // namespace
}  // namespace morvel
