#include "Bar/Layout/WindowProjection.h"

#include <algorithm>

#include "Vectors.h"

namespace morvel {
namespace {

using vectors::Json;

WindowSnapshot snapshot(const Json& r) {
    WindowSnapshot s;
    s.id = vectors::windowID(r["id"]);
    s.pid = ProcessID(r["pid"]);
    if (!r["num"].is_null()) s.cgWindowID = WindowNumber(r["num"]);
    if (!r["bundle"].is_null()) s.bundleID = r["bundle"];
    s.appName = r["app"];
    s.title = r["title"];
    s.frame = {r["frame"][0], r["frame"][1], r["frame"][2], r["frame"][3]};
    s.isFullscreen = r["fs"];
    s.isWindowless = r["wl"];
    return s;
}

ProjectionContext context(const Json& in) {
    ProjectionContext c;
    for (const Json& screen : in["screens"]) {
        const Json& f = screen[1];
        c.screens.push_back({DisplayID(screen[0]), "", {f[0], f[1], f[2], f[3]}, {}});
    }
    c.mainDisplay = DisplayID(in["mainDisplay"]);
    c.screenID = DisplayID(in["screenID"]);
    if (!in["spaceID"].is_null()) c.spaceID = SpaceID(in["spaceID"]);
    c.windowSpaceMode = *fromRawString<WindowSpaceMode>(in["windowSpaceMode"].get<std::string>());
    c.windowlessAppsMode = *fromRawString<WindowlessAppsMode>(in["windowlessAppsMode"].get<std::string>());
    for (const Json& id : in["blacklist"]) c.windowBlacklist.insert(id);
    for (const Json& item : in["pinned"])
        if (item[0] == "app") c.pinnedBundleIDs.insert(item[1]);
    return c;
}

TEST(WindowProjection, RecordedCases) {
    vectors::walk("projection_windows", [](const Json& in) {
        int asked = 0;
        SpaceQueryCache spaces(
            [&](WindowNumber number) {
                ++asked;
                std::set<SpaceID> found;
                const std::string key = std::to_string(number.value);
                if (in["windowSpaces"].contains(key))
                    for (const Json& space : in["windowSpaces"][key]) found.insert(SpaceID(space));
                return found;
            },
            [&](DisplayID display) -> std::optional<SpaceID> {
                const Json& space = in["firstUserSpace"].value(std::to_string(display.value), Json());
                if (space.is_null()) return std::nullopt;
                return SpaceID(space);
            });
        WindowMap windows;
        for (const Json& record : in["records"]) {
            const WindowSnapshot s = snapshot(record);
            windows.emplace(s.id, s);
        }
        std::vector<uint64_t> kept;
        for (const WindowSnapshot& s : windowsOnThisScreen(windows, context(in), spaces))
            kept.push_back(vectors::number(s.id));
        std::ranges::sort(kept);
        EXPECT_LE(asked, static_cast<int>(windows.size()));
        return Json(kept);
    });
}

TEST(RunningProjection, RecordedEqualities) {
    vectors::walk("projection_equality", [](const Json& in) {
        RunningProjection projection;
        const auto update = [&](const Json& records, const Json& settings) {
            std::vector<WindowSnapshot> filtered;
            for (const Json& record : records) filtered.push_back(snapshot(record));
            ProjectionContext c;
            c.spaceID = SpaceID(settings["spaceID"]);
            c.windowSpaceMode = *fromRawString<WindowSpaceMode>(settings["windowSpaceMode"].get<std::string>());
            c.windowlessAppsMode =
                *fromRawString<WindowlessAppsMode>(settings["windowlessAppsMode"].get<std::string>());
            return projection.update(filtered, c,
                                     *fromRawString<GroupingMode>(settings["groupingMode"].get<std::string>()));
        };
        update(in["a"], in["settingsA"]);
        return Json(!update(in["b"], in["settingsB"]));
    });
}

TEST(WindowProjection, OrderDoesNotDependOnTracking) {
    ProjectionContext c;
    c.screens = {{DisplayID(1), "", {0, 0, 1000, 1000}, {}}};
    c.mainDisplay = c.screenID = DisplayID(1);
    c.windowSpaceMode = WindowSpaceMode::AllSpaces;
    SpaceQueryCache spaces([](WindowNumber) { return std::set<SpaceID>(); },
                           [](DisplayID) { return std::optional<SpaceID>(); });
    std::vector<std::vector<WindowID>> orders;
    for (size_t buckets : {1u, 7u, 1000u}) {  // another bucket count iterates in another order
        WindowMap windows(buckets);
        for (uint64_t n = 1; n <= 60; ++n)
            windows.emplace(vectors::windowID(n), WindowSnapshot{vectors::windowID(n),
                                                                 ProcessID(1),
                                                                 {},
                                                                 {},
                                                                 "App" + std::to_string(n % 7),
                                                                 "",
                                                                 {10, 10, 10, 10},
                                                                 false,
                                                                 false});
        std::vector<WindowID> ids;
        for (const auto& w : windowsOnThisScreen(windows, c, spaces)) ids.push_back(w.id);
        orders.push_back(ids);
    }
    EXPECT_EQ(orders[0], orders[1]);
    EXPECT_EQ(orders[0], orders[2]);
}

}  // namespace
}  // namespace morvel
