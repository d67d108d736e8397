// What the window server tells of Spaces, and the signal that they switch.
#include <gtest/gtest.h>

#include "Display/SpaceEvents.h"
#include "Display/SpaceQuery.h"
#include "Vectors.h"
#include "sim/Desktop.h"

namespace morvel {
namespace {

using sim::Desktop;
using vectors::Json;

ManagedSpace spaceOf(const Json& dictionary) {
    const auto number = [&](const char* key) -> std::optional<SpaceID> {
        const Json value = dictionary.is_object() ? dictionary.value(key, Json()) : Json();
        return value.is_number_integer() ? std::optional(SpaceID{value.get<uint64_t>()}) : std::nullopt;
    };
    ManagedSpace space{.type = {}, .id64 = number("id64"), .managedSpaceID = number("ManagedSpaceID")};
    if (const auto type = number("type")) space.type = static_cast<int64_t>(type->value);
    return space;
}

ManagedDisplay displayOf(const Json& dictionary) {
    ManagedDisplay display;
    const Json identifier = dictionary.value("Display Identifier", Json());
    if (identifier.is_string()) display.identifier = identifier.get<std::string>();
    const Json spaces = dictionary.value("Spaces", Json());
    if (spaces.is_array())
        for (const Json& space : spaces) display.spaces.push_back(spaceOf(space));
    if (dictionary.contains("Current Space")) display.current = spaceOf(dictionary["Current Space"]);
    return display;
}

TEST(Spaces, RecordedSnapshots) {
    vectors::walk("spaces_snapshot", [](const Json& input) {
        Desktop desktop(std::vector<sim::DisplaySpec>{});
        for (const Json& display : input["displays"]) desktop.windowServer().displays.push_back(displayOf(display));
        desktop.screens().main = DisplayID{input["main"].get<uint32_t>()};
        for (const auto& [uuid, display] : input["uuids"].items()) {
            const DisplayID id{display.get<uint32_t>()};
            desktop.screens().uuids[id] = uuid;
            desktop.screens().list.push_back({id, "", {}, {}});
        }
        Json result = Json::object();
        SpaceQuery query(desktop.windowServer(), desktop.screens());
        for (const auto& [display, spaces] : query.snapshotByDisplay()) {
            std::set<uint64_t> ids;
            for (const SpaceID id : spaces.spaces) ids.insert(id.value);
            EXPECT_EQ(ids.size(), spaces.spaces.size()) << "each Space once";
            result[std::to_string(display.value)] = {{"current", spaces.current ? Json(spaces.current->value) : Json()},
                                                     {"spaces", ids}};
        }
        return result;
    });
}

TEST(Spaces, KeepTheServersOrderAndFollowTheSwitch) {
    Desktop desktop(sim::twoDisplays());
    SpaceQuery query(desktop.windowServer(), desktop.screens());
    const SpaceID first = *desktop.currentSpace(DisplayID{1});
    const SpaceID fullScreen = desktop.addSpace(DisplayID{1}, 4);
    const SpaceID second = desktop.addSpace(DisplayID{1});
    auto& spaces = desktop.windowServer().display(sim::SimScreens::uuidOf(DisplayID{1}))->spaces;
    std::swap(spaces.front(), spaces.back());

    std::vector<int> heard;
    SpaceEvents events(desktop.windowServer());
    events.start([&](uint32_t) { heard.push_back(1); });
    events.start([&](uint32_t) { heard.push_back(2); });
    EXPECT_EQ(desktop.windowServer().spaceObservers, 1);
    desktop.switchSpace(DisplayID{1}, fullScreen);
    EXPECT_TRUE(heard.empty()) << "never inside the change";
    desktop.settle();
    EXPECT_EQ(heard, (std::vector<int>{2, 2})) << "the second handler alone, for both of the server's events";

    const DisplaySpaces now = query.snapshotByDisplay().at(DisplayID{1});
    EXPECT_EQ(now.current, fullScreen) << "current, though it is no user Space";
    EXPECT_EQ(now.spaces, (std::vector<SpaceID>{second, first}));
    EXPECT_EQ(query.activeSpace(), fullScreen);
}

TEST(Spaces, WindowsAreMovedBetweenThem) {
    Desktop desktop;
    SpaceQuery query(desktop.windowServer(), desktop.screens());
    const SpaceID second = desktop.addSpace(DisplayID{1});
    const WindowNumber window = desktop.launch("Editor").open().number();
    query.add(window, {});
    query.remove(window, {});
    EXPECT_TRUE(desktop.journal().deeds().empty()) << "an empty set asks nothing of the server";
    query.move(window, second);
    EXPECT_EQ(query.spaces(window), std::set{second});
}

TEST(Spaces, EverythingIsEmptyWhereTheServerCannotBeAsked) {
    Desktop desktop;
    desktop.windowServer().hasSpaceFunctions = false;
    SpaceQuery query(desktop.windowServer(), desktop.screens());
    SpaceEvents events(desktop.windowServer());
    events.start([](uint32_t) { ADD_FAILURE() << "no such signal here"; });
    desktop.switchSpace(DisplayID{1}, SpaceID{2});
    desktop.settle();
    EXPECT_FALSE(query.activeSpace());
    EXPECT_TRUE(query.snapshotByDisplay().empty());
    EXPECT_TRUE(query.spaces(WindowNumber{11}).empty());
}

}  // namespace
}  // namespace morvel
