// Hours of random life on one desktop, on which the program grows old: nothing is lost, and nothing is held for ever.
//
// A few minutes of the desktop's own time by default. For the whole hour, under the sanitizers:
//   MORVEL_SOAK_HOURS=1 build/asan/tests/core_tests --gtest_filter='Soak.*'
// MORVEL_SOAK_SEED gives another life, and `setarch -R` the same one each time.
#include <cstdio>
#include <cstdlib>

#include "App/RandomWalk.h"

namespace morvel {
namespace {

constexpr int kStepsBetweenRests = 1000;
constexpr int kRestsBetweenRelaunches = 4;
/// How much more the program may hold than a new one would: what is kept for the next time, such as the icons and the
/// launcher's applications.
constexpr size_t kKept = 512 << 10;  // bytes

double numberFrom(const char* variable, double otherwise) {
    const char* text = std::getenv(variable);
    return text ? std::atof(text) : otherwise;
}

TEST(Soak, GrowsOldWithoutLosingOrKeepingAnything) {
    const std::chrono::duration<double, std::ratio<3600>> hours(numberFrom("MORVEL_SOAK_HOURS", 0.1));
    RandomWalk walk(static_cast<unsigned>(numberFrom("MORVEL_SOAK_SEED", 1)));
    const auto start = walk.desktop().mainLoop().now();
    const auto age = [&] { return walk.desktop().mainLoop().now() - start; };
    for (int rest = 1; age() < hours && !testing::Test::HasFailure(); ++rest) {
        SCOPED_TRACE("rest " + std::to_string(rest));
        for (int i = 0; i < kStepsBetweenRests; ++i) walk.step();
        walk.rest();
        if (rest % kRestsBetweenRelaunches != 0) continue;
        const RandomWalk::Held held = walk.relaunch();
        std::printf("after %5.1f minutes: %zu kB held, %zu kB by a new start\n",
                    std::chrono::duration<double, std::ratio<60>>(age()).count(), held.old >> 10, held.fresh >> 10);
        EXPECT_LT(held.old, held.fresh + kKept) << "something grows";
        walk.crash();
    }
    walk.end();
}

}  // namespace
}  // namespace morvel
