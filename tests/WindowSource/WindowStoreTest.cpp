#include "WindowSource/WindowStore.h"

#include <limits>
#include <map>

#include "Platform/ProcessProbe.h"
#include "Vectors.h"

namespace morvel {

using vectors::Json;
using vectors::optional;

namespace {

WindowSnapshot snapshotOf(WindowID id, const Json& r) {
    WindowSnapshot s;
    s.id = id;
    s.pid = ProcessID(r[0]);
    if (!r[1].is_null()) s.cgWindowID = WindowNumber(r[1]);
    s.bundleID = optional<std::string>(r[2]);
    s.appName = r[3];
    s.title = r[4];
    s.frame = vectors::rect<AXSpace>(r[5]);
    s.isFullscreen = r[6];
    s.isWindowless = r[7];
    return s;
}

Json record(const WindowSnapshot& s) {
    return {s.pid.value,
            s.cgWindowID ? Json(s.cgWindowID->value) : Json(),
            s.bundleID ? Json(*s.bundleID) : Json(),
            s.appName,
            s.title,
            vectors::json(s.frame),
            s.isFullscreen,
            s.isWindowless};
}

/// Applies recorded events and tells what each changed, in the recorded cases' terms.
class Player {
public:
    Json play(const Json& events) {
        Json steps = Json::array();
        for (const Json& event : events) {
            windowPublications_ = focusPublications_ = 0;
            store_.apply(read(event));
            steps.push_back(changes());
        }
        return steps;
    }

private:
    WindowEvent read(const Json& e) const {
        const std::string kind = e[0];
        if (kind == "added") return event::Added{snapshotOf(id(e[1]), e[2])};
        if (kind == "removed") return event::Removed{id(e[1])};
        if (kind == "title") return event::TitleChanged{id(e[1]), e[2]};
        if (kind == "frame") return event::FrameChanged{id(e[1]), vectors::rect<AXSpace>(e[2])};
        if (kind == "fs") return event::FullscreenChanged{id(e[1]), e[2]};
        if (kind == "focused") return event::Focused{e[1].is_null() ? std::nullopt : std::optional(id(e[1]))};
        if (kind == "terminated") return event::AppTerminated{ProcessID(e[1])};
        if (kind == "windowless") return event::AppBecameWindowless{ProcessID(e[1]), optional<std::string>(e[2]), e[3]};
        if (kind == "lostLast")
            return event::AppLostLastWindow{id(e[1]), ProcessID(e[2]), optional<std::string>(e[3]), e[4]};
        EXPECT_EQ(kind, "gotFirst");
        return event::AppGotFirstWindow{ProcessID(e[1])};
    }

    WindowID id(const Json& name) const {
        if (name.is_number()) return vectors::windowID(name);
        for (const auto& [minted, text] : minted_)
            if (text == name) return minted;
        return vectors::windowID(std::stoull(name.get<std::string>()));
    }

    std::string name(WindowID id) {
        if (id.high == 0) return std::to_string(vectors::number(id));
        return minted_.try_emplace(id, "new" + std::to_string(minted_.size() + 1)).first->second;
    }

    Json changes() {
        std::map<std::string, Json> now;
        for (const auto& [id, snapshot] : *store_.windows().value()) {
            EXPECT_EQ(id, snapshot.id);
            now[name(id)] = record(snapshot);
        }
        Json step;
        for (const auto& [key, value] : now)
            if (const auto was = before_.find(key); was == before_.end() || was->second != value)
                step["set"][key] = value;
        for (const auto& [key, value] : before_)
            if (!now.contains(key)) step["del"].push_back(key);
        step["windows"] = now == before_ ? 0 : windowPublications_;
        step["focus"] = focusPublications_;
        const auto focused = store_.focusedID().value();
        step["focused"] = focused ? Json(name(*focused)) : Json();
        before_ = std::move(now);
        return step;
    }

    WindowIDMint mint_{1};
    WindowStore store_{mint_, [](ProcessID) { return true; }};
    int windowPublications_ = 0;
    int focusPublications_ = 0;
    std::map<WindowID, std::string> minted_;
    std::map<std::string, Json> before_;
    Subscription windows_ = store_.windows().subscribe([this](const WindowMapRef&) { ++windowPublications_; });
    Subscription focus_ = store_.focusedID().subscribe([this](const auto&) { ++focusPublications_; });
};

WindowSnapshot window(uint64_t id, int pid) {
    WindowSnapshot s;
    s.id = vectors::windowID(id);
    s.pid = ProcessID(pid);
    return s;
}

}  // namespace

TEST(WindowStore, RecordedEvents) {
    vectors::walk("store_apply", [](const Json& events) { return Player().play(events); });
}

TEST(WindowStore, CopiesTheMapOnlyForThoseWhoKeepIt) {
    WindowIDMint mint(1);
    WindowStore store(mint, killProbe);
    store.apply(event::Added{window(1, 10)});
    const WindowMap* map = store.windows().value().get();
    store.apply(event::Added{window(2, 10)});
    store.apply(event::TitleChanged{vectors::windowID(1), "a"});
    EXPECT_EQ(store.windows().value().get(), map) << "nobody keeps it: changed in place";

    const WindowMapRef kept = store.windows().value();
    store.apply(event::TitleChanged{vectors::windowID(1), "b"});
    EXPECT_EQ(kept->at(vectors::windowID(1)).title, "a") << "what is kept does not change";
    EXPECT_EQ(store.windows().value()->at(vectors::windowID(1)).title, "b");
    map = store.windows().value().get();
    store.apply(event::TitleChanged{vectors::windowID(1), "c"});
    EXPECT_EQ(store.windows().value().get(), map) << "one copy, not one per event";
}

TEST(WindowStore, SubscribersMayApplyEvents) {
    WindowIDMint mint(1);
    WindowStore store(mint, killProbe);
    std::vector<size_t> sizes;
    const Subscription eager = store.windows().subscribe([&](const WindowMapRef& windows) {
        if (windows->size() == 1) store.apply(event::Added{window(2, 10)});
    });
    const Subscription plain =
        store.windows().subscribe([&](const WindowMapRef& windows) { sizes.push_back(windows->size()); });
    store.apply(event::Added{window(1, 10)});
    EXPECT_EQ(sizes, (std::vector<size_t>{0, 2, 1})) << "each round tells its own map, whole";
    EXPECT_EQ(store.windows().value()->size(), 2u);
    EXPECT_EQ(store.snapshot(ProcessID(10)).size(), 2u);
    EXPECT_TRUE(store.snapshot(ProcessID(11)).empty());
}

TEST(WindowStore, ProbesProcesses) {
    EXPECT_TRUE(killProbe(ProcessID(1))) << "another user's process exists although it may not be signalled";
    EXPECT_FALSE(killProbe(ProcessID(std::numeric_limits<int32_t>::max())));
}

}  // namespace morvel
