#include "Platform/Linux/UI/DamageRegion.h"

#include <gtest/gtest.h>

#include <random>

namespace morvel::x11 {
namespace {

bool touches(const DamageRegion& region, const PixelRect& rect) {
    return std::ranges::any_of(region.rects(), [&](const PixelRect& r) { return r.intersects(rect); });
}

bool covers(const DamageRegion& region, int x, int y) {
    return touches(region, {x, y, 1, 1});
}

TEST(DamageRegion, CoversAllThatWasAddedInFewDisjointRectangles) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        std::mt19937 random(seed);
        const auto upTo = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
        DamageRegion region;
        std::vector<PixelRect> added;
        for (int i = 0; i < 30; ++i) {
            added.push_back({upTo(400), upTo(40), upTo(60), upTo(20)});
            region.add(added.back());
        }
        const auto& rects = region.rects();
        EXPECT_LE(rects.size(), DamageRegion::kMaxRects) << "seed " << seed;
        for (size_t i = 0; i < rects.size(); ++i)
            for (size_t j = i + 1; j < rects.size(); ++j)
                EXPECT_FALSE(rects[i].intersects(rects[j])) << "seed " << seed;
        for (const PixelRect& r : added) {
            if (r.isEmpty()) continue;
            EXPECT_TRUE(covers(region, r.x, r.y) && covers(region, r.maxX() - 1, r.maxY() - 1)) << "seed " << seed;
        }
    }
}

TEST(DamageRegion, FarApartStaysApartAndNothingLiesOutsideTheWindow) {
    DamageRegion region;
    region.add({0, 0, 80, 32});
    region.add({900, 0, 80, 32});
    EXPECT_EQ(region.rects().size(), 2u);
    EXPECT_FALSE(touches(region, {400, 0, 100, 32})) << "what lies between is not painted";

    const DamageRegion clipped = region.clippedTo({0, 0, 940, 20});
    EXPECT_FALSE(touches(clipped, {940, 0, 100, 100}) || touches(clipped, {0, 20, 1000, 100}));
    EXPECT_TRUE(covers(clipped, 939, 19));
    EXPECT_TRUE(region.clippedTo({500, 0, 10, 10}).isEmpty());
}

TEST(SplitByRows, StripesFollowEachOtherAndKeepWithinTheLimit) {
    const auto stripes = splitByRows({5, 10, 100, 25}, 1000);
    int next = 10;
    for (const PixelRect& stripe : stripes) {
        EXPECT_EQ(stripe.y, next);
        EXPECT_EQ(stripe.width, 100);
        EXPECT_LE(stripe.area(), 1000);
        next = stripe.maxY();
    }
    EXPECT_EQ(next, 35);
    EXPECT_EQ(splitByRows({0, 0, 5000, 3}, 1000).size(), 3u) << "a row is never torn";
    EXPECT_TRUE(splitByRows({}, 1000).empty());
}

}  // namespace
}  // namespace morvel::x11
