#include "Util/RetryScheduler.h"

#include <set>
#include <string>

#include "Vectors.h"
#include "sim/FakeMainLoop.h"

namespace morvel {

using namespace std::chrono_literals;
using vectors::Json;

namespace {

/// Plays one recorded trace; times are in milliseconds from the loop's start.
class Trace {
public:
    Json play(const Json& steps) {
        for (size_t i = 0; i < steps.size(); ++i) {
            const Json& step = steps[i];
            loop_.advance(Instant{step[0].get<int64_t>() * 1ms} - loop_.now());
            if (step[1] == "start") start(step, i);
            if (step[1] == "cancel") scheduler_.cancel(step[2]);
            Json live = Json::array();
            for (const std::string& key : keys_)
                if (scheduler_.isPending(key)) live.push_back(key);
            live_.push_back(live);
        }
        return {{"calls", calls_}, {"live", live_}};
    }

private:
    void start(const Json& step, size_t index) {
        const std::string key = step[2];
        const Json results = step[3];
        keys_.insert(key);
        RetryScheduler<std::string>::Backoff backoff = doublingBackoff;
        if (step.size() > 4)
            backoff = [delays = step[4]](int n) { return Duration(delays.at(n - 1).get<int64_t>() * 1ms); };
        const auto attempt = [this, key, index, results, call = 0]() mutable {
            const int64_t now = loop_.now().time_since_epoch() / 1ms;
            calls_.push_back({now, key, index, ++call});
            return call <= static_cast<int>(results.size()) && results[call - 1].get<bool>();
        };
        scheduler_.start(key, 6, backoff, attempt);
    }

    sim::FakeMainLoop loop_;
    RetryScheduler<std::string> scheduler_{loop_};
    std::set<std::string> keys_;
    Json calls_ = Json::array();
    Json live_ = Json::array();
};

}  // namespace

TEST(RetryScheduler, RecordedBackoffs) {
    vectors::walk("retry_backoff", [](const Json& callsMade) -> Json {
        return std::chrono::duration<double>(doublingBackoff(callsMade)).count();
    });
}

TEST(RetryScheduler, RecordedTraces) {
    vectors::walk("retry_traces", [](const Json& steps) { return Trace().play(steps); });
}

TEST(RetryScheduler, AnAttemptHasTheLastWordOnItsOwnJob) {
    sim::FakeMainLoop loop;
    RetryScheduler<int> scheduler(loop);
    int cancelled = 0, replaced = 0, replacement = 0;
    scheduler.start(1, 6, doublingBackoff, [&] {
        ++cancelled;
        scheduler.cancel(1);
        return false;
    });
    scheduler.start(2, 6, doublingBackoff, [&] {
        ++replaced;
        scheduler.start(2, 6, doublingBackoff, [&] { return ++replacement == 2; });
        return true;  // this success is not the new job's
    });
    EXPECT_FALSE(scheduler.isPending(1));
    EXPECT_TRUE(scheduler.isPending(2));
    loop.advance(60s);
    EXPECT_EQ(cancelled, 1);
    EXPECT_EQ(replaced, 1);
    EXPECT_EQ(replacement, 2);
}

TEST(RetryScheduler, NothingOutlivesIt) {
    sim::FakeMainLoop loop;
    int calls = 0;
    auto scheduler = std::make_unique<RetryScheduler<int>>(loop);
    scheduler->start(1, 6, doublingBackoff, [&] { return ++calls < 0; });
    scheduler->start(2, 6, doublingBackoff, [&, owned = std::make_shared<int>(7)] {
        if (++calls == 4) scheduler.reset();
        EXPECT_EQ(*owned, 7) << "an attempt lives until it returns";
        return false;
    });
    loop.advance(60s);
    EXPECT_EQ(calls, 4) << "both once at the start, both once more after 0.5 s; the second ended everything";
    EXPECT_EQ(loop.armedTimers(), 0u);
}

}  // namespace morvel
