#include "Theme/IconCache.h"

#include <map>
#include <memory>
#include <set>

#include "Vectors.h"
#include "sim/FakeMainLoop.h"

namespace morvel {

using vectors::Json;

namespace {

struct NamedImage : ui::Image {
    NamedImage(std::string n, Size s) : name(std::move(n)), points(s) {}
    Size size() const override { return points; }
    std::string name;
    Size points;
};

/// A system whose every application has an icon, except the named ones.
class NamedIcons : public Icons {
public:
    ui::ImageRef applicationIcon(const std::string& bundleID) override { return find(bundleID); }
    ui::ImageRef processIcon(ProcessID pid) override { return find("process " + std::to_string(pid.value)); }
    ui::ImageRef fileIcon(const std::string& path) override { return find(path); }
    ui::ImageRef symbol(const std::string& name, double) override { return find(name); }
    ui::ImageRef empty(Size size) override { return std::make_shared<NamedImage>("empty", size); }
    ui::ImageRef baked(const ui::ImageRef& image, Size size) override {
        ++bakes;
        return std::make_shared<NamedImage>(nameOf(image), size);
    }

    static std::string nameOf(const ui::ImageRef& image) { return dynamic_cast<const NamedImage&>(*image).name; }

    std::set<std::string> missing;
    int bakes = 0;  ///< one per load

private:
    ui::ImageRef find(const std::string& name) const {
        return missing.contains(name) ? nullptr : std::make_shared<NamedImage>(name, Size{32, 32});
    }
};

class IconCacheTest : public testing::Test {
protected:
    /// Asks for an icon of which `seen_` then tells the name.
    void ask(const std::optional<std::string>& bundleID, int pid = 1) {
        tokens_.push_back(cache_->icon(bundleID, ProcessID(pid), [this](const ui::ImageRef& image) {
            seen_.push_back(NamedIcons::nameOf(image));
            EXPECT_EQ(image->size(), (Size{64, 64}));
        }));
    }

    NamedIcons icons_;
    sim::FakeMainLoop loop_;
    std::unique_ptr<IconCache> cache_ = std::make_unique<IconCache>(icons_, loop_);
    std::vector<std::string> seen_;
    Subscriptions tokens_;
};

}  // namespace

TEST(IconCache, RecordedKeysAndLoads) {
    vectors::walk("icon_cache", [](const Json& input) -> Json {
        if (input["fn"] == "key") {
            const Json& bundle = input["bundle"];
            return IconCache::key(bundle.is_null() ? std::nullopt : std::optional(bundle.get<std::string>()),
                                  ProcessID(input["pid"]));
        }
        EXPECT_EQ(input["fn"], "trace");
        NamedIcons icons;
        sim::FakeMainLoop loop;
        IconCache cache(icons, loop);
        const auto load = [&](int n) {
            int deliveries = 0;
            const auto bundle = n < 0 ? std::nullopt : std::optional("b" + std::to_string(n));
            const Subscription token =
                cache.icon(bundle, ProcessID(n < 0 ? -n : 1), [&](const ui::ImageRef&) { ++deliveries; });
            loop.settle();
            EXPECT_EQ(deliveries, 1);
        };
        Json loads = Json::array();
        for (const Json& op : input["ops"]) {
            const int before = icons.bakes;
            const int first = op.is_array() ? op[0] : op, last = op.is_array() ? op[1] : op;
            for (int n = first; n <= last; ++n) load(n);
            loads.push_back(icons.bakes - before);
        }
        return loads;
    });
}

TEST_F(IconCacheTest, LoadsLaterAndOnceAndDeliversAtOnceFromThenOn) {
    ask("com.a");
    ask("com.a");
    EXPECT_TRUE(seen_.empty()) << "loading is for a later turn";
    loop_.settle();
    EXPECT_EQ(seen_, (std::vector<std::string>{"com.a", "com.a"}));
    EXPECT_EQ(icons_.bakes, 1);
    ask("com.a");
    EXPECT_EQ(seen_.size(), 3u);
    EXPECT_EQ(icons_.bakes, 1);
}

TEST_F(IconCacheTest, LoadsOneIconPerTurn) {
    std::vector<int> bakesAtTurns;
    for (const char* bundle : {"com.a", "com.b", "com.c"}) ask(bundle);
    for (int turn = 0; turn < 3; ++turn) loop_.post([&] { bakesAtTurns.push_back(icons_.bakes); });
    loop_.settle();
    EXPECT_EQ(bakesAtTurns, (std::vector{1, 1, 1})) << "the second load waits for what was posted in the meantime";
    EXPECT_EQ(icons_.bakes, 3);
}

TEST_F(IconCacheTest, FallsBackStepByStep) {
    struct Row {
        const char* missing;
        const char* expected;
    };
    int pid = 7;
    for (const Row& row : {Row{"com.a", "process 8"}, Row{"process 9", "app.dashed"}, Row{"app.dashed", "empty"}}) {
        icons_.missing.insert({row.missing, "process 10"});
        cache_ = std::make_unique<IconCache>(icons_, loop_);
        ask("com.a", ++pid);
        loop_.settle();
        EXPECT_EQ(seen_.back(), row.expected) << "without " << row.missing;
    }
}

TEST_F(IconCacheTest, AProcessTakesItsIconWithIt) {
    ask(std::nullopt, 7);
    ask("com.a", 7);
    loop_.settle();
    cache_->forget(ProcessID(7));
    cache_->forget(ProcessID(8));
    ask("com.a", 7);
    EXPECT_EQ(seen_.size(), 3u) << "an application's icon stays for its next start";
    ask(std::nullopt, 7);
    EXPECT_EQ(seen_.size(), 3u) << "the number may be another program's by now";
    loop_.settle();
    EXPECT_EQ(seen_.back(), "process 7");
}

TEST_F(IconCacheTest, DeliveriesEndWithTheirTokens) {
    ask("com.a");
    ask("com.b");
    tokens_[0].reset();
    loop_.settle();
    EXPECT_EQ(seen_, std::vector<std::string>{"com.b"});
    EXPECT_EQ(icons_.bakes, 1) << "what nobody waits for is not loaded";
    ask("com.a");
    loop_.settle();
    EXPECT_EQ(seen_.back(), "com.a") << "a request that was given up can be made again";
}

TEST_F(IconCacheTest, ADeliveryMayAskAgainAndDestroyTheCache) {
    const Subscription token = cache_->icon("com.a", ProcessID(1), [&](const ui::ImageRef&) {
        ask("com.b");
        ask("com.a");
        cache_.reset();
    });
    loop_.settle();
    EXPECT_EQ(seen_, std::vector<std::string>{"com.a"}) << "cached by then; the other ended with the cache";
    EXPECT_EQ(icons_.bakes, 1);
}

}  // namespace morvel
