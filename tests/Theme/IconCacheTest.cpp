#include "Theme/IconCache.h"

#include <memory>

#include "Vectors.h"
#include "sim/FakeMainLoop.h"
#include "sim/SimIcons.h"

namespace morvel {

using vectors::Json;

namespace {

struct IconCacheTest : testing::Test {
    /// Asks for an icon of which `seen` then tells the name.
    void ask(const std::optional<std::string>& bundleID, int pid = 1) {
        tokens.push_back(cache->icon(bundleID, ProcessID(pid), [this](const ui::ImageRef& image) {
            seen.push_back(sim::imageName(image).substr(6));  // behind "baked:"
            EXPECT_EQ(image->size(), (Size{64, 64}));
        }));
    }
    /// One per icon that was loaded.
    int bakes() const {
        int count = 0;
        for (const auto& [name, times] : icons.loads)
            if (name.starts_with("baked:")) count += times;
        return count;
    }

    sim::SimIcons icons;
    sim::FakeMainLoop loop;
    std::unique_ptr<IconCache> cache = std::make_unique<IconCache>(icons, loop);
    std::vector<std::string> seen;
    Subscriptions tokens;
};

using Names = std::vector<std::string>;

}  // namespace

TEST_F(IconCacheTest, RecordedKeysAndLoads) {
    vectors::walk("icon_cache", [this](const Json& input) -> Json {
        if (input["fn"] == "key")
            return IconCache::key(vectors::optional<std::string>(input["bundle"]), ProcessID(input["pid"]));
        EXPECT_EQ(input["fn"], "trace");
        cache = std::make_unique<IconCache>(icons, loop);
        Json loads = Json::array();
        for (const Json& op : input["ops"]) {
            const int before = bakes();
            const int first = op.is_array() ? op[0] : op, last = op.is_array() ? op[1] : op;
            for (int n = first; n <= last; ++n) {
                seen.clear();
                ask(n < 0 ? std::nullopt : std::optional("b" + std::to_string(n)), n < 0 ? -n : 1);
                loop.settle();
                EXPECT_EQ(seen.size(), 1u);
            }
            loads.push_back(bakes() - before);
        }
        return loads;
    });
}

TEST_F(IconCacheTest, LoadsLaterAndOnceOneIconPerTurn) {
    std::vector<int> bakesAtTurns;
    for (const char* bundle : {"a", "a", "b", "c"}) ask(bundle);
    EXPECT_TRUE(seen.empty()) << "loading is for a later turn";
    for (int turn = 0; turn < 3; ++turn) loop.post([&] { bakesAtTurns.push_back(bakes()); });
    loop.settle();
    EXPECT_EQ(seen, (Names{"app:a", "app:a", "app:b", "app:c"}));
    EXPECT_EQ(bakesAtTurns, (std::vector{1, 1, 1})) << "the second load waits for what was posted in the meantime";
    EXPECT_EQ(bakes(), 3);
    ask("a");
    EXPECT_EQ(seen.size(), 5u) << "known by now, so at once";
}

TEST_F(IconCacheTest, FallsBackStepByStep) {
    const std::pair<std::string, std::string> rows[] = {
        {"app:a", "pid:1"}, {"pid:1", "symbol:app.dashed"}, {"symbol:app.dashed", "empty"}};
    for (const auto& [missing, expected] : rows) {
        icons.missing.insert(missing);
        cache = std::make_unique<IconCache>(icons, loop);
        ask("a");
        loop.settle();
        EXPECT_EQ(seen.back(), expected) << "without " << missing;
    }
}

TEST_F(IconCacheTest, AProcessTakesItsIconWithIt) {
    ask(std::nullopt, 7);
    ask("a", 7);
    loop.settle();
    cache->forget(ProcessID(7));
    cache->forget(ProcessID(8));
    ask("a", 7);
    EXPECT_EQ(seen.size(), 3u) << "an application's icon stays for its next start";
    ask(std::nullopt, 7);
    EXPECT_EQ(seen.size(), 3u) << "the number may be another program's by now";
    loop.settle();
    EXPECT_EQ(seen.back(), "pid:7");
}

TEST_F(IconCacheTest, DeliveriesEndWithTheirTokens) {
    ask("a");
    ask("b");
    tokens[0].reset();
    loop.settle();
    EXPECT_EQ(seen, Names{"app:b"});
    EXPECT_EQ(bakes(), 1) << "what nobody waits for is not loaded";
    ask("a");
    loop.settle();
    EXPECT_EQ(seen.back(), "app:a") << "a request that was given up can be made again";
}

TEST_F(IconCacheTest, ADeliveryMayAskAgainAndDestroyTheCache) {
    const Subscription token = cache->icon("a", ProcessID(1), [&](const ui::ImageRef&) {
        ask("b");
        ask("a");
        cache.reset();
    });
    loop.settle();
    EXPECT_EQ(seen, Names{"app:a"}) << "cached by then; the other ended with the cache";
    EXPECT_EQ(bakes(), 1);
}

}  // namespace morvel
