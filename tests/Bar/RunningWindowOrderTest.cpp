#include "Bar/Layout/RunningWindowOrder.h"

#include <random>
#include <set>

#include "Vectors.h"

namespace morvel {

using vectors::Json;

namespace {

WindowSnapshot window(WindowID id, ProcessID pid) {
    WindowSnapshot s;
    s.id = id;
    s.pid = pid;
    return s;
}

/// What the bar remembers between two rebuilds, and the windows of the next.
struct World {
    std::vector<WindowID> old;
    std::unordered_map<WindowID, ProcessID> oldPIDs;
    std::vector<WindowSnapshot> current;

    std::vector<WindowID> sync() const { return RunningWindowOrder::sync(old, oldPIDs, current); }
};

World randomWorld(unsigned seed) {
    std::mt19937 random(seed);
    World world;
    for (uint64_t id = 1; id <= 40; ++id) {
        const WindowID window_ = vectors::windowID(id);
        const ProcessID pid(static_cast<int>(random() % 6));
        const unsigned fate = random() % 3;  // closed, kept or opened
        if (fate != 2) {
            world.old.push_back(window_);
            world.oldPIDs[window_] = pid;
        }
        if (fate != 0) world.current.push_back(window(window_, pid));
    }
    std::ranges::shuffle(world.old, random);
    std::ranges::shuffle(world.current, random);
    return world;
}

}  // namespace

TEST(RunningWindowOrder, RecordedOrders) {
    vectors::walk("order_sync", [](const Json& input) {
        World world;
        for (const Json& id : input["old"]) world.old.push_back(vectors::windowID(id));
        for (const Json& entry : input["oldPIDs"]) world.oldPIDs[vectors::windowID(entry[0])] = ProcessID(entry[1]);
        for (const Json& entry : input["current"])
            world.current.push_back(window(vectors::windowID(entry[0]), ProcessID(entry[1])));
        Json order = Json::array();
        for (const WindowID& id : world.sync()) order.push_back(vectors::number(id));
        return order;
    });
}

TEST(RunningWindowOrder, SurvivorsNeverSwapAndNothingIsLost) {
    for (unsigned seed = 0; seed < 500; ++seed) {
        const World world = randomWorld(seed);
        const std::vector<WindowID> order = world.sync();
        std::set<WindowID> current;
        for (const WindowSnapshot& each : world.current) current.insert(each.id);
        std::vector<WindowID> before = world.old, after = order;
        std::erase_if(before, [&](WindowID id) { return !current.contains(id); });
        std::erase_if(after, [&](WindowID id) { return !world.oldPIDs.contains(id); });
        EXPECT_EQ(after, before) << "seed " << seed;
        EXPECT_EQ(order.size(), current.size()) << "seed " << seed;
        EXPECT_EQ(std::set(order.begin(), order.end()), current) << "seed " << seed;
    }
}

TEST(RunningWindowOrder, RepeatedIDsAreShownOnce) {
    const WindowID a = vectors::windowID(1), b = vectors::windowID(2);
    const ProcessID pid(10);
    const World world{{a, a, b}, {{a, pid}, {b, pid}}, {window(b, pid), window(a, pid), window(b, pid)}};
    EXPECT_EQ(world.sync(), (std::vector{a, b}));
}

}  // namespace morvel
