// Random desktop life in many short walks, and in one long one.
#include "App/RandomWalk.h"

namespace morvel {
namespace {

using testing::Test;

TEST(RandomWalk, TheBarsShowTheDesktopWheneverItRests) {
    constexpr unsigned kSeeds = 40;
    constexpr int kRests = 16;
    constexpr int kSteps = 150;
    for (unsigned seed = 1; seed <= kSeeds && !Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomWalk walk(seed);
        for (int rest = 0; rest < kRests && !Test::HasFailure(); ++rest) {
            SCOPED_TRACE("rest " + std::to_string(rest));
            for (int i = 0; i < kSteps; ++i) walk.step();
            walk.rest();
        }
        walk.end();
    }
}

}  // namespace
}  // namespace morvel
