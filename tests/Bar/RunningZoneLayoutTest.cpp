#include "Bar/Layout/RunningZoneLayout.h"

#include "Bar/Layout/RunningZoneWidths.h"
#include "Vectors.h"

namespace morvel {

using vectors::choice;
using vectors::Json;
namespace zone = RunningZoneLayout;

namespace {

WindowSnapshot windowOf(const Json& json) {
    WindowSnapshot s;
    if (json.contains("id")) s.id = *WindowID::parse(json["id"].get<std::string>());
    s.bundleID = vectors::optional<std::string>(json.value("bundle", Json()));
    s.appName = json["app"];
    s.title = json["title"];
    s.isWindowless = json.value("wl", false);
    return s;
}

std::vector<WindowSnapshot> windowsOf(const Json& json) {
    std::vector<WindowSnapshot> windows;
    for (const Json& window : json) windows.push_back(windowOf(window));
    return windows;
}

Json ids(const std::vector<WindowSnapshot>& windows) {
    Json ids = Json::array();
    for (const WindowSnapshot& window : windows) ids.push_back(window.id.text());
    return ids;
}

Json describe(const zone::Result& decision) {
    if (const auto* flat = std::get_if<zone::Flat>(&decision)) return {{"flat", ids(flat->windows)}};
    Json groups = Json::array();
    for (const zone::Group& group : std::get<zone::Grouped>(decision).groups)
        groups.push_back({group.bundleID, group.appName, ids(group.windows)});
    return {{"grouped", groups}};
}

zone::Result decisionOf(const std::string& kind, size_t count) {
    if (kind == "flat") return zone::Flat{std::vector<WindowSnapshot>(count)};
    return zone::Grouped{std::vector<zone::Group>(count)};
}

zone::FlatWidthRule widthRule(const Json& input, const char* modeKey) {
    return {
        choice<WindowButtonWidthMode>(input[modeKey]), input["custom"], input["spacing"],
        [measure = input["measure"]](std::string_view text) { return measure.at(std::string(text)).get<double>(); }};
}

zone::RunningZoneRoom roomOf(const Json& input) {
    zone::RunningZoneRoom room;
    room.baseWidth = input["base"];
    room.edge = input["top"] ? MorvelEdge::Top : MorvelEdge::Bottom;
    room.compactAtTop = input["compact"];
    room.leftReserve = input["left"];
    room.rightReserve = input["right"];
    if (const Json& notch = input["notch"]; !notch.is_null()) room.notch = zone::NotchRange{notch[0], notch[1]};
    room.pinnedWidth = input["pinned"];
    room.systemWidth = input["system"];
    room.spacing = input["spacing"];
    return room;
}

}  // namespace

TEST(RunningZoneLayout, RecordedModes) {
    vectors::walk("layout_mode", [](const Json& input) -> Json {
        const bool expanded = input.contains("expanded")
                                  ? input["expanded"].get<bool>()
                                  : zone::isCompactTopExpanded(choice<MorvelEdge>(input["edge"]), input["compactAtTop"],
                                                               input["isCompactTopExpanded"]);
        return rawString(zone::effectiveMode(choice<GroupingMode>(input["configured"]), expanded));
    });
}

TEST(RunningZoneLayout, RecordedDecisions) {
    vectors::walk("layout_decide", [](const Json& input) {
        return describe(zone::decide(windowsOf(input["windows"]), input["available"], input["flatPerButton"],
                                     choice<GroupingMode>(input["mode"])));
    });
}

TEST(RunningZoneLayout, RecordedIconOnlyDecisions) {
    vectors::walk("layout_icon_only", [](const Json& input) -> Json {
        return zone::windowlessIconOnly(choice<WindowlessDisplayMode>(input["mode"]),
                                        decisionOf(input["decision"], input["decisionCount"]), input["windowlessCount"],
                                        input["available"], input["flatPerButton"]);
    });
}

TEST(RunningZoneLayout, RecordedWidths) {
    vectors::walk("layout_widths", [](const Json& input) -> Json {
        if (input["fn"] == "available") return zone::availableRunningWidth(roomOf(input));
        if (input["fn"] == "projected")
            return zone::projectedFlatRunningWidth(windowsOf(input["windows"]), widthRule(input, "mode"));
        EXPECT_EQ(input["fn"], "resolved");
        const auto width =
            zone::resolveWindowButtonWidth(choice<WindowButtonWidthMode>(input["mode"]), input["custom"]);
        return width ? Json(*width) : Json();
    });
}

TEST(RunningZoneLayout, RecordedPlans) {
    vectors::walk("layout_plan", [](const Json& input) -> Json {
        const auto mode = zone::effectiveMode(choice<GroupingMode>(input["groupingMode"]), input["expanded"]);
        const zone::RunningZonePlan plan =
            zone::planRunningZone(windowsOf(input["windows"]), widthRule(input, "widthMode"), input["available"], mode,
                                  choice<WindowlessDisplayMode>(input["windowlessDisplayMode"]));
        return {{"projectedWindowed", plan.projectedWindowed},
                {"projectedWindowless", plan.projectedWindowless},
                {"flatPerButton", plan.flatPerButton},
                {"decision", describe(plan.decision)},
                {"iconOnly", plan.windowlessIconOnly}};
    });
}

}  // namespace morvel
