#include "Platform/Linux/Windows/ClientWindow.h"

#include <gtest/gtest.h>

namespace morvel::x11 {
namespace {

bool onlyOneHundredLives(ProcessID pid) {
    return pid == ProcessID(100);
}

TEST(ResolvePid, BelievesAWindowOnlyWhereTheServerDoesNotKnow) {
    constexpr int32_t kAlive = 100, kDead = 200;
    const auto resolve = [](std::optional<int32_t> server, std::optional<int32_t> told, bool isLocal) {
        return resolvePid(server, told, isLocal, 7, onlyOneHundredLives).value;
    };
    EXPECT_EQ(resolve(kAlive, kDead, true), kAlive);
    EXPECT_EQ(resolve({}, kAlive, true), kAlive);
    EXPECT_EQ(resolve(0, kAlive, true), kAlive);
    EXPECT_EQ(resolve({}, kAlive, false), -8) << "another machine's number names nothing here";
    for (const auto lie : {std::optional(0), std::optional(-1), std::optional(kDead), std::optional<int32_t>()})
        EXPECT_EQ(resolve({}, lie, true), -8);
    EXPECT_NE(resolvePid({}, {}, true, 8, onlyOneHundredLives).value, -8) << "one process per client";
}

TEST(ClientWindow, FramesHaveDecorationsAndNoShadows) {
    ClientWindow client;
    client.content = {100, 50, 400, 300};
    client.decorations = {2, 3, 20, 4};
    EXPECT_EQ(client.frame(), (Rect<RootSpace>{98, 30, 405, 324}));

    ClientWindow shadowed;
    shadowed.content = {100, 50, 400, 300};
    shadowed.shadow = {10, 10, 5, 15};
    EXPECT_EQ(shadowed.frame(), (Rect<RootSpace>{110, 55, 380, 280}));

    for (const ClientWindow& each : {client, shadowed}) {
        EXPECT_EQ(each.contentSizeFor(each.frame()), each.content.size()) << "setting a frame undoes reading it";
    }
    EXPECT_EQ(client.contentSizeFor({0, 0, 1, 1}), (Size{1, 1})) << "no size that the server refuses";
    EXPECT_EQ(client.cornerFor({98, 30, 405, 324}), (Point<RootSpace>{98, 30}));
    EXPECT_EQ(shadowed.cornerFor({110, 55, 380, 280}), (Point<RootSpace>{100, 50}));
}

TEST(ClientWindow, ShadowsLargerThanTheWindowLeaveNoNegativeSize) {
    ClientWindow client;
    client.content = {32767, -32768, 10, 10};
    client.shadow = {4096, 4096, 4096, 4096};
    EXPECT_EQ(client.frame().width, 0);
    EXPECT_EQ(client.frame().height, 0);
    EXPECT_LE(client.frame().x, 32767);
}

TEST(ClientWindow, OnlyWindowsThatThePersonWorksWithAreAdmitted) {
    using enum ClientType;
    ClientWindow client;
    EXPECT_TRUE(client.isAdmissible()) << "a window without a type is an ordinary one";
    client.transientFor = 5;
    EXPECT_EQ(client.type(), Dialog);
    EXPECT_TRUE(client.isAdmissible());
    for (const auto& [type, isAdmitted] : {std::pair(Dock, false), {Desktop, false}, {Other, false}, {Utility, true}}) {
        client.declaredType = type;
        EXPECT_EQ(client.isAdmissible(), isAdmitted);
    }
    client.skipsTaskbar = true;
    EXPECT_FALSE(client.isAdmissible());
}

TEST(ClientWindow, AnEmptyTitleGivesWayToTheOlderOne) {
    ClientWindow client;
    client.legacyName = "legacy";
    client.netName = "";
    EXPECT_EQ(client.title(), "legacy");
    client.netName = "new";
    EXPECT_EQ(client.title(), "new");
}

}  // namespace
}  // namespace morvel::x11
