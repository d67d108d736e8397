#include "Util/Debouncer.h"

#include <algorithm>
#include <string>
#include <thread>

#include "Vectors.h"
#include "sim/FakeMainLoop.h"

namespace morvel {

using namespace std::chrono_literals;
using vectors::Json;

TEST(Debouncer, RecordedTraces) {
    vectors::walk("debounce_traces", [](const Json& input) {
        sim::FakeMainLoop loop;
        Debouncer<std::string> debouncer(input["interval"].get<int64_t>() * 1ms, loop);
        Json ran = Json::array();
        for (size_t i = 0; i < input["steps"].size(); ++i) {
            const Json& step = input["steps"][i];
            loop.advance(Instant{step[0].get<int64_t>() * 1ms} - loop.now());
            if (step[1] == "cancelAll") debouncer.cancelAll();
            if (step[1] == "cancel") debouncer.cancel(step[2]);
            if (step[1] != "schedule") continue;
            debouncer.schedule(step[2], [&ran, &loop, key = step[2], i] {
                const int64_t now = loop.now().time_since_epoch() / 1ms;
                ran.push_back({now, key, i});
            });
        }
        std::sort(ran.begin(), ran.end());
        return ran;
    });
}

TEST(Debouncer, ActionsMayScheduleAndDestroy) {
    sim::FakeMainLoop loop;
    auto debouncer = std::make_unique<Debouncer<int>>(200ms, loop);
    int runs = 0;
    debouncer->schedule(1, [&] {
        ++runs;
        debouncer->schedule(1, [&] {
            ++runs;
            debouncer.reset();
        });
        debouncer->schedule(2, [&] { ADD_FAILURE() << "ran after destruction"; });
    });
    loop.advance(1s);
    EXPECT_EQ(runs, 2);
    EXPECT_EQ(loop.armedTimers(), 0u);
}

TEST(Debouncer, CallsFromOtherThreadsTakeEffectOnTheMainThread) {
    sim::FakeMainLoop loop;  // its queue is not guarded, so the other thread is over before the loop runs
    Debouncer<int> debouncer(200ms, loop);
    std::string ran;
    debouncer.schedule(1, [&] { ran += "main"; });
    debouncer.schedule(2, [&] { ran += "cancelled"; });
    std::thread([&] {
        debouncer.schedule(1, [&] { ran += "other"; });
        debouncer.cancel(2);
        debouncer.schedule(3, [&] { ran += "never armed"; });
        debouncer.cancel(3);
    }).join();
    loop.advance(199ms);
    EXPECT_EQ(ran, "");
    EXPECT_EQ(loop.armedTimers(), 1u) << "replaced and cancelled timers do not wake the program";
    loop.advance(1ms);
    EXPECT_EQ(ran, "other");
}

}  // namespace morvel
