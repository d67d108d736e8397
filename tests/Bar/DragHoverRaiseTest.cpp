// When a resting drag raises something, as recorded traces.
#include <gtest/gtest.h>

#include "Bar/Drag/RunningWindowDrag.h"
#include "Bar/DragHoverRaise/DragHoverRaiseController.h"
#include "Bar/DragHoverRaise/RunLoopDragHoverClock.h"
#include "Vectors.h"
#include "sim/FakeMainLoop.h"
#include "sim/SimDrags.h"

namespace morvel {
namespace {

using sim::SimPasteboard;
using vectors::Json;

SimPasteboard board(const std::string& name) {
    if (name == "fileURL") return SimPasteboard::ofFile("/a");
    if (name == "filenames") return SimPasteboard::ofText(std::string(ui::kLegacyFilenamesType), "/a");
    if (name == "text") return SimPasteboard::ofText("public.utf8-plain-text", "hello");
    if (name == "own") return SimPasteboard::ofText(RunningWindowDrag::type(), WindowID{}.text());
    if (name == "pinned") return SimPasteboard::ofText("app.morvel.Morvel.pinned-item", WindowID{}.text());
    if (name == "own+file") {
        SimPasteboard both = SimPasteboard::ofFile("/a");
        both.strings.emplace(RunningWindowDrag::type(), WindowID{}.text());
        return both;
    }
    EXPECT_EQ(name, "none");
    return {};
}

struct Hover {
    sim::FakeMainLoop loop;
    RunLoopDragHoverClock clock{loop};
    DragHoverRaiseMode mode = DragHoverRaiseMode::FileOnly;
    Json done = Json::array();
    std::unique_ptr<DragHoverRaiseController> controller = std::make_unique<DragHoverRaiseController>(
        clock, DragHoverActions{
                   .modeProvider = [this] { return mode; },
                   .raiseWindow = [this](WindowID id) { tell("raise", vectors::number(id)); },
                   .activateApp = [this](ProcessID pid) { tell("activate", pid.value); },
                   .openGroupPopover = [this](const std::string& id) { tell("openPopover", id); },
                   .closeGroupPopover = [this] { tell("closePopover"); },
                   .pinReveal = [this] { tell("pin"); },
                   .unpinReveal = [this] { tell("unpin"); },
               });

    template <class... About>
    void tell(const char* what, const About&... about) {
        done.push_back(Json::array({what, about...}));
    }
    void happen(const Json& event) {
        const std::string what = event[0];
        if (what == "mode") mode = vectors::choice<DragHoverRaiseMode>(event[1]);
        if (what == "exit") controller->dragExited(vectors::windowID(event[1]));
        if (what == "end") controller->dragEnded();
        if (what == "adv") loop.advance(std::chrono::milliseconds(event[1].get<int>()));
        if (what == "enter") controller->dragEntered(vectors::windowID(event[1]), kind(event[2]), board(event[3]));
    }
    static ButtonKind kind(const Json& json) {
        if (json[0] == "grouped") return GroupedTarget{json[1]};
        if (json[0] == "windowless") return WindowlessTarget{ProcessID(json[1].get<int>())};
        return WindowTarget{vectors::windowID(json[1])};
    }
};

TEST(DragHoverRaise, RecordedTraces) {
    vectors::walk("draghover_traces", [](const Json& events) {
        Hover hover;
        Json steps = Json::array();
        for (const Json& event : events) {
            hover.happen(event);
            steps.push_back(std::exchange(hover.done, Json::array()));
        }
        return steps;
    });
}

TEST(DragHoverRaise, ABarThatGoesInMidDragLetsGoOfEverything) {
    Hover hover;
    hover.happen({"enter", 1, {"grouped", "com.a"}, "fileURL"});
    hover.happen({"adv", 600});
    hover.happen({"enter", 1, {"window", 11}, "fileURL"});
    EXPECT_EQ(hover.loop.armedTimers(), 1u);
    hover.done.clear();
    hover.controller.reset();
    EXPECT_EQ(hover.done, Json::array({Json::array({"closePopover"}), Json::array({"unpin"})}));
    EXPECT_EQ(hover.loop.armedTimers(), 0u);
}

}  // namespace
}  // namespace morvel
