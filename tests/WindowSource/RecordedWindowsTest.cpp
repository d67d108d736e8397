// The recorded cases of observing, admitting and acting on windows.
#include <gtest/gtest.h>

#include "Platform/AXNames.h"
#include "WindowSource/TraceWorld.h"
#include "WindowSource/WatchedDesktop.h"

namespace morvel {
namespace {

using vectors::Json;

TEST(RecordedWindows, ObserverTraces) {
    vectors::walk("observer_traces", [](const Json& steps) {
        TraceWorld world;
        Json told = Json::array();
        for (const Json& step : steps) told.push_back(world.play(step));
        return told;
    });
}

TEST(RecordedWindows, Admission) {
    vectors::walk("window_admission", [](const Json& attributes) {
        TraceWorld world;
        world.play({"proc", 10, {{"bundle", "com.a"}, {"name", "Alpha"}, {"obj", 1}}});
        world.element(1, attributes);
        world.play({"axwindows", 10, {1}});
        Json admitted;
        for (const Json& event : world.play(Json::array({"start"})))
            if (event[0] == "added")
                admitted = {{"title", event[1]["title"]}, {"frame", event[1]["frame"]}, {"fs", event[1]["fs"]}};
        return admitted;
    });
}

Json click(const Json& input) {
    WatchedDesktop desktop;
    sim::SimApp& app = desktop.launch("Editor");
    sim::SimWindow& window = app.open();
    sim::SimWindow& other = app.open();
    desktop.start();
    if (input["isFocusedWindow"] == true) window.focus();
    if (input["isFocusedWindow"] == false) other.focus();
    if (input["appActive"] == false) desktop.launch("Other").open().focus();
    if (input["minimized"].is_null()) window.failReading(ax::kMinimized);
    if (input["minimized"] == true)
        desktop.accessibility().at(window.element()).attributes.insert_or_assign("AXMinimized", true);
    desktop.settle();
    desktop.journal().clear();
    desktop.manager().clickWindow(desktop.idOf(window));
    std::vector<std::string> done = desktop.journal().texts();
    if (done.size() > 1 && done[0] == "activate" && done[1] == "activate") done.erase(done.begin());
    return done;
}

Json move(const Json& input) {
    WatchedDesktop desktop(sim::oneDisplay(1000, input["firstScreenHeight"]));
    sim::SimWindow& window = desktop.launch("Editor").open({.width = input["size"][0], .height = input["size"][1]});
    desktop.start();
    const Json& r = input["screen"];
    desktop.manager().moveWindow(desktop.idOf(window), {DisplayID{2}, "", {r[0], r[1], r[2], r[3]}, {}});
    EXPECT_EQ(window.frame().size(), (Size{input["size"][0], input["size"][1]})) << "the size is kept";
    return {window.frame().x, window.frame().y};
}

TEST(RecordedWindows, Actions) {
    vectors::walk("window_actions",
                  [](const Json& input) { return input["fn"] == "click" ? click(input) : move(input); });
}

}  // namespace
}  // namespace morvel
