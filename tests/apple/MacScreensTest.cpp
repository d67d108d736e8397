// The displays as the host tells them.
#include "Platform/Mac/Screens/MacScreens.h"

#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

class ScreensOfTheMac : public RuntimeTest {
protected:
    MacScreens screens_;
};

TEST_F(ScreensOfTheMac, ScreensAreDescribedInTheirOrder) {
    EXPECT_TRUE(screens_.screens().empty()) << "as for a moment while displays are reconfigured";
    workspace().setScreens(
        {{.display = 2, .name = "Desk", .frame = {{0, 0}, {1440, 900}}, .visibleFrame = {{0, 0}, {1440, 875}}},
         {.display = 0xFFFFFFFF,
          .name = "Wall",
          .frame = {{-1920, 40}, {1920, 1080}},
          .visibleFrame = {{-1920, 40}, {1920, 1080}}}});
    const auto screens = screens_.screens();
    ASSERT_EQ(screens.size(), 2U);
    EXPECT_EQ(screens[0], (Screen{DisplayID(2), "Desk", {0, 0, 1440, 900}, {0, 0, 1440, 875}}));
    EXPECT_EQ(screens[1].displayID, DisplayID(0xFFFFFFFF));
    EXPECT_EQ(screens[1].frame, (Rect<ScreenSpace>{-1920, 40, 1920, 1080}));
}

TEST_F(ScreensOfTheMac, ACameraHousingLeavesRoomOnBothSides) {
    workspace().setScreens({{.display = 1,
                             .name = "Built-in",
                             .frame = {{0, 0}, {1512, 982}},
                             .visibleFrame = {{0, 0}, {1512, 944}},
                             .auxiliaryTopLeft = {{0, 950}, {663, 32}},
                             .auxiliaryTopRight = {{848, 950}, {664, 32}}}});
    const auto screens = screens_.screens();
    ASSERT_EQ(screens.size(), 1U);
    EXPECT_EQ(screens[0].auxiliaryTopLeft, (Rect<ScreenSpace>{0, 950, 663, 32}));
    EXPECT_EQ(screens[0].auxiliaryTopRight, (Rect<ScreenSpace>{848, 950, 664, 32}));
}

TEST_F(ScreensOfTheMac, AScreenMayHaveNoUsableNumber) {
    workspace().setScreens({{.display = 2, .name = "Desk"}});
    const auto describe = [&](const Id& number) {
        Entries entries;
        if (number) entries.emplace_back(makeString("NSScreenNumber"), number);
        setProperty(workspace().screens[0], "deviceDescription", makeDictionary(std::move(entries)));
    };
    for (const Id& number : {Id(), makeString("2"), makeNumber(std::int64_t{-1}), makeNumber(std::int64_t{1} << 32)}) {
        describe(number);
        const auto screens = screens_.screens();
        ASSERT_EQ(screens.size(), 1U);
        EXPECT_EQ(screens[0].displayID, std::nullopt);
        EXPECT_EQ(screens[0].name, "Desk");
    }
}

TEST_F(ScreensOfTheMac, DisplaysHavePersistentIdentifiers) {
    windowServer().mainDisplay = 5;
    windowServer().displayUUIDs = {{5, "37D8832A-2D66-02CA-B9F7-8F30A301B230"}};
    EXPECT_EQ(screens_.mainDisplay(), DisplayID(5));
    EXPECT_EQ(screens_.uuidString(DisplayID(5)), "37D8832A-2D66-02CA-B9F7-8F30A301B230");
    EXPECT_EQ(screens_.uuidString(DisplayID(6)), std::nullopt);
    answer("NSStatusBar", "thickness", 24.0);
    EXPECT_EQ(screens_.statusBarThickness(), 24);
}

TEST_F(ScreensOfTheMac, ChangesAreHeardUntilTheTokenEnds) {
    int changes = 0;
    Subscription token = screens_.observeChanges([&] { ++changes; });
    workspace().setScreens({{.display = 2, .name = "Desk"}});
    workspace().setScreens({});
    EXPECT_EQ(changes, 2);
    token.reset();
    workspace().setScreens({{.display = 2, .name = "Desk"}});
    EXPECT_EQ(changes, 2);
}

}  // namespace
}  // namespace morvel::mac::checked
