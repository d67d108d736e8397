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
    s.bundleID = vectors::optional<std::string>(r["bundle"]);
    s.appName = r["app"];
    s.title = r["title"];
    s.frame = vectors::rect<AXSpace>(r["frame"]);
    s.isFullscreen = r["fs"];
    s.isWindowless = r["wl"];
    return s;
}

ProjectionContext context(const Json& in) {
    ProjectionContext c;
    for (const Json& screen : in["screens"])
        c.screens.push_back({DisplayID(screen[0]), "", vectors::rect<ScreenSpace>(screen[1]), {}});
    c.mainDisplay = DisplayID(in["mainDisplay"]);
    c.screenID = DisplayID(in["screenID"]);
    if (!in["spaceID"].is_null()) c.spaceID = SpaceID(in["spaceID"]);
    c.windowSpaceMode = vectors::choice<WindowSpaceMode>(in["windowSpaceMode"]);
    c.windowlessAppsMode = vectors::choice<WindowlessAppsMode>(in["windowlessAppsMode"]);
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
                const Json ids = in["windowSpaces"].value(std::to_string(number.value), Json::array());
                for (const Json& space : ids) found.insert(SpaceID(space));
                return found;
            },
            [&](DisplayID display) -> std::optional<SpaceID> {
                const Json space = in["firstUserSpace"].value(std::to_string(display.value), Json());
                return space.is_null() ? std::nullopt : std::optional(SpaceID(space));
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
            c.windowSpaceMode = vectors::choice<WindowSpaceMode>(settings["windowSpaceMode"]);
            c.windowlessAppsMode = vectors::choice<WindowlessAppsMode>(settings["windowlessAppsMode"]);
            return projection.update(filtered, c, vectors::choice<GroupingMode>(settings["groupingMode"]));
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
        for (uint64_t n = 1; n <= 60; ++n) {
            WindowSnapshot& window = windows[vectors::windowID(n)];
            window.id = vectors::windowID(n);
            window.appName = "App" + std::to_string(n % 7);
            window.frame = {10, 10, 10, 10};
        }
        std::vector<WindowID> ids;
        for (const auto& w : windowsOnThisScreen(windows, c, spaces)) ids.push_back(w.id);
        orders.push_back(ids);
    }
    EXPECT_EQ(orders[0], orders[1]);
    EXPECT_EQ(orders[0], orders[2]);
}

}  // namespace
}  // namespace morvel
