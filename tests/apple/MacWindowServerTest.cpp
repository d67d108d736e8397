// The window server's answers, and a server that lacks functions, refuses, or answers nonsense.
#include "Platform/Mac/Windows/MacWindowServer.h"

#include "Declarations.h"
#include "Platform/Mac/System/MacLog.h"
#include "RuntimeTest.h"

namespace morvel::mac::checked {
namespace {

class WindowServerOfTheMac : public RuntimeTest {
protected:
    static Id entry(std::initializer_list<std::pair<const char*, Id>> values) {
        Entries entries;
        for (const auto& [key, value] : values) entries.emplace_back(makeString(key), value);
        return makeDictionary(std::move(entries));
    }
    static Id number(std::int64_t value) { return makeNumber(value); }

    MacLog log_;
    MacWindowServer server_{log_};
};

TEST_F(WindowServerOfTheMac, PrivateFunctionsAreCalledWithTheirTypes) {
    const auto check = []<typename Signature>(const LateFunction<Signature>& function) {
        checkFunction({function.name(), functionTypes<Signature>()});
    };
    const SpaceFunctions functions;
    check(functions.mainConnection);
    check(functions.activeSpace);
    check(functions.copyManagedDisplaySpaces);
    check(functions.copySpacesForWindows);
    check(functions.addWindowsToSpaces);
    check(functions.removeWindowsFromSpaces);
    check(functions.moveWindowsToManagedSpace);
    check(functions.registerNotify);
}

TEST_F(WindowServerOfTheMac, DisplaysAndSpacesAreRead) {
    windowServer().activeSpace = 5;
    windowServer().managedDisplaySpaces = makeArray(
        {entry({{"Display Identifier", makeString("Main")},
                {"Current Space", entry({{"id64", number(5)}, {"type", number(4)}})},
                {"Spaces", makeArray({entry({{"id64", number(3)}, {"ManagedSpaceID", number(3)}, {"type", number(0)}}),
                                      entry({{"ManagedSpaceID", number(5)}, {"type", number(4)}})})}})});
    EXPECT_EQ(server_.activeSpace(), SpaceID(5));
    const auto displays = server_.managedDisplaySpaces();
    ASSERT_TRUE(displays);
    ASSERT_EQ(displays->size(), 1U);
    const ManagedDisplay& display = displays->front();
    EXPECT_EQ(display.identifier, "Main");
    ASSERT_TRUE(display.current);
    EXPECT_EQ(display.current->id64, SpaceID(5));
    EXPECT_EQ(display.current->type, 4);
    ASSERT_EQ(display.spaces.size(), 2U);
    EXPECT_EQ(display.spaces[0].id64, SpaceID(3));
    EXPECT_EQ(display.spaces[1].id64, std::nullopt);
    EXPECT_EQ(display.spaces[1].managedSpaceID, SpaceID(5));
}

TEST_F(WindowServerOfTheMac, ValuesOfOtherTypesAreAbsent) {
    windowServer().managedDisplaySpaces =
        makeArray({makeString("no dictionary"),
                   entry({{"Display Identifier", number(1)},
                          {"Current Space", makeString("no dictionary")},
                          {"Spaces", makeArray({number(3), entry({{"id64", makeString("3")}, {"type", number(0)}}),
                                                entry({{"id64", number(-3)}, {"type", makeNumber(0.5)}})})}}),
                   entry({{"Spaces", makeString("no array")}})});
    const auto displays = server_.managedDisplaySpaces();
    ASSERT_TRUE(displays);
    ASSERT_EQ(displays->size(), 2U);
    EXPECT_EQ(displays->front().identifier, std::nullopt);
    EXPECT_FALSE(displays->front().current);
    ASSERT_EQ(displays->front().spaces.size(), 2U);
    EXPECT_EQ(displays->front().spaces[0].id64, std::nullopt);
    EXPECT_EQ(displays->front().spaces[0].type, 0);
    EXPECT_EQ(displays->front().spaces[1].id64, std::nullopt) << "negative";
    EXPECT_EQ(displays->front().spaces[1].type, std::nullopt) << "not whole";
    EXPECT_TRUE(displays->back().spaces.empty());

    for (const Id& nothing : {makeString("no array"), Id()}) {  // the last: the call failed
        windowServer().managedDisplaySpaces = nothing;
        EXPECT_FALSE(server_.managedDisplaySpaces().has_value());
    }
}

TEST_F(WindowServerOfTheMac, WindowsMoveBetweenSpaces) {
    const WindowNumber window(7);
    EXPECT_EQ(server_.spacesOf(window), std::vector<SpaceID>{}) << "asked, and on none";
    server_.addToSpaces(window, {SpaceID(3), SpaceID(4)});
    server_.removeFromSpaces(window, {SpaceID(3)});
    EXPECT_EQ(server_.spacesOf(window), std::vector{SpaceID(4)});
    server_.moveToSpace(window, SpaceID(9));
    EXPECT_EQ(server_.spacesOf(window), std::vector{SpaceID(9)});
    EXPECT_TRUE(logLines().empty());
    windowServer().refusesMoves = true;
    server_.moveToSpace(window, SpaceID(3));
    server_.moveToSpace(window, SpaceID(4));
    server_.addToSpaces(window, {SpaceID(4)});
    windowServer().refusesMoves = false;
    server_.removeFromSpaces(window, {SpaceID(9)});
    EXPECT_EQ(server_.spacesOf(window), std::vector{SpaceID(9)}) << "it stays where it is, or it would be nowhere";
    EXPECT_EQ(logLines().size(), 1U) << "a system that refuses is told of once";
}

TEST_F(WindowServerOfTheMac, MissingFunctionsGiveEmptyAnswers) {
    windowServer().hide("CGSMainConnectionID");
    windowServer().activeSpace = 2;
    EXPECT_EQ(server_.activeSpace(), SpaceID(2)) << "asked with connection 0";
    windowServer().activeSpace = 0;
    EXPECT_EQ(server_.activeSpace(), std::nullopt);

    for (const auto& function : WindowServerWorld::functions()) windowServer().hide(function.first);
    MacWindowServer without(log_);
    const WindowNumber window(7);
    EXPECT_EQ(without.activeSpace(), std::nullopt);
    EXPECT_FALSE(without.managedDisplaySpaces());
    EXPECT_FALSE(without.spacesOf(window)) << "could not be asked";
    without.addToSpaces(window, {SpaceID(3)});
    without.removeFromSpaces(window, {SpaceID(3)});
    without.moveToSpace(window, SpaceID(3));
    EXPECT_FALSE(without.observeSpaceEvents([](std::uint32_t) {}));
    EXPECT_TRUE(logLines().empty());
}

TEST_F(WindowServerOfTheMac, SpaceEventsAreRegisteredOnceAndHopToTheMainQueueUntilTheEnd) {
    Texts heard;
    const auto listener = [&](const char* name) {
        return [&heard, name](std::uint32_t event) {
            EXPECT_TRUE(dispatch().isOnMain());
            heard.push_back(name + std::to_string(event));
        };
    };
    auto server = std::make_unique<MacWindowServer>(log_);
    Subscription first = server->observeSpaceEvents(listener("a"));
    const Subscription second = server->observeSpaceEvents(listener("b"));
    const auto& registered = windowServer().registrations;
    ASSERT_EQ(registered.size(), 2U);
    EXPECT_EQ(registered[0].event, 1327U);
    EXPECT_EQ(registered[1].event, 1328U);
    EXPECT_EQ(registered[0].callback, registered[1].callback);
    EXPECT_EQ(registered[0].context, nullptr);
    windowServer().spaceChanged(1327);
    EXPECT_EQ(heard, Texts{}) << "the server calls from a thread of its own";
    dispatch().runPending();
    EXPECT_EQ(std::exchange(heard, {}), (Texts{"a1327", "b1327"}));
    first.reset();
    windowServer().spaceChanged(1328);
    dispatch().runPending();
    EXPECT_EQ(std::exchange(heard, {}), Texts{"b1328"});

    windowServer().spaceChanged(1327);
    server.reset();
    windowServer().spaceChanged(1328);
    dispatch().runPending();
    EXPECT_EQ(heard, Texts{}) << "it is gone";
}

TEST_F(WindowServerOfTheMac, TheListOfWindowsIsRead) {
    windowServer().windows = {
        {.number = 7, .layer = 25, .pid = 42, .bounds = {{10, 20}, {300, 200}}, .ownerName = "Notes", .name = "To do"},
        {.number = 8, .layer = 0, .pid = 43, .bounds = {{0, 0}, {800, 600}}},
    };
    const auto windows = server_.windowList(WindowListScope::OnScreen);
    EXPECT_EQ(windowServer().lastListOptions, 17U) << "on screen only, without desktop elements";
    ASSERT_EQ(windows.size(), 2U);
    EXPECT_EQ(windows[0].number, WindowNumber(7));
    EXPECT_EQ(windows[0].owner, ProcessID(42));
    EXPECT_EQ(windows[0].layer, 25);
    EXPECT_EQ(windows[0].bounds, (Rect<AXSpace>{10, 20, 300, 200}));
    EXPECT_EQ(windows[0].ownerName, "Notes");
    EXPECT_EQ(windows[0].name, "To do");
    EXPECT_EQ(server_.layerOf(WindowNumber(8)), 0);
    EXPECT_EQ(server_.layerOf(WindowNumber(9)), std::nullopt);
    EXPECT_EQ(windowServer().lastListOptions, 8U) << "one window, on screen or not";

    windowServer().windows.clear();
    for (const Id& strange : {makeString("no dictionary"), entry({{"kCGWindowNumber", makeString("7")}}), entry({}),
                              entry({{"kCGWindowNumber", number(std::int64_t{1} << 40)}})}) {
        windowServer().listedBesides = strange;
        EXPECT_TRUE(server_.windowList(WindowListScope::All).empty());
        EXPECT_EQ(server_.layerOf(WindowNumber(7)), std::nullopt);
    }
    windowServer().listedBesides = entry({{"kCGWindowNumber", number(7)},
                                          {"kCGWindowLayer", makeString("high")},
                                          {"kCGWindowBounds", entry({{"X", number(1)}})},
                                          {"kCGWindowName", number(3)}});
    const auto partial = server_.windowList(WindowListScope::All);
    ASSERT_EQ(partial.size(), 1U);
    EXPECT_EQ(partial[0].layer, std::nullopt);
    EXPECT_EQ(partial[0].owner, std::nullopt);
    EXPECT_TRUE(partial[0].bounds.isEmpty());
    EXPECT_EQ(partial[0].name, "");
}

}  // namespace
}  // namespace morvel::mac::checked
