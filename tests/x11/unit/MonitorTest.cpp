#include "Platform/Linux/Screens/Monitor.h"

#include <gtest/gtest.h>

namespace morvel::x11 {
namespace {

const Rect<RootSpace> kLeft{0, 0, 1000, 800}, kRight{1000, 100, 600, 700}, kRoot{0, 0, 1600, 800};

std::vector<std::string> names(const std::vector<Monitor>& monitors) {
    std::vector<std::string> out;
    for (const Monitor& monitor : monitors) out.push_back(monitor.name);
    return out;
}

TEST(MainFirst, ThePrimaryMonitorLeadsAndMirrorsAreLeftOut) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(names(mainFirst({{"a", false, kLeft}, {"b", true, kRight}})), (Names{"b", "a"}));
    EXPECT_EQ(names(mainFirst({{"a", false, kLeft}, {"b", false, kRight}})), (Names{"a", "b"}));
    EXPECT_EQ(names(mainFirst({{"a", false, kLeft}, {"mirror", true, kLeft}})), (Names{"mirror"}));
    EXPECT_EQ(names(mainFirst({{"off", true, {}}, {"b", false, kRight}})), (Names{"b"}));
    EXPECT_TRUE(mainFirst({}).empty());
}

TEST(WithoutStruts, TakesWhatIsReservedOnThisMonitorAlone) {
    const Strut topLeft{.top = 30, .topStart = 0, .topEnd = 999};
    EXPECT_EQ(withoutStruts(kLeft, kRoot, {topLeft}), (Rect<RootSpace>{0, 30, 1000, 770}));
    EXPECT_EQ(withoutStruts(kRight, kRoot, {topLeft}), kRight);
    const Strut lowTop{.top = 130, .topStart = 1000, .topEnd = 1599};
    EXPECT_EQ(withoutStruts(kRight, kRoot, {lowTop}), (Rect<RootSpace>{1000, 130, 600, 670}))
        << "measured from the root's edge, also where the monitor begins lower";
    const Strut absurd{.bottom = 4000, .bottomStart = 0, .bottomEnd = 1599};
    EXPECT_EQ(withoutStruts(kLeft, kRoot, {absurd}), kLeft);
}

TEST(MainDisplayFrame, ConvertsAboutTheMainMonitorWhereverItIs) {
    const MainDisplayFrame main{kRight};
    EXPECT_EQ(main.toAX(kRight), (Rect<AXSpace>{0, 0, 600, 700}));
    EXPECT_EQ(main.toScreen(kRight), (Rect<ScreenSpace>{0, 0, 600, 700}));
    EXPECT_EQ(main.toScreen(kLeft), (Rect<ScreenSpace>{-1000, 0, 1000, 800}));
    EXPECT_EQ(main.toRoot(main.toScreen(kLeft)), kLeft);
    EXPECT_EQ(main.toRoot(main.toAX(kLeft)), kLeft);
}

}  // namespace
}  // namespace morvel::x11
