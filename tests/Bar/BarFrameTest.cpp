#include "Bar/BarFrame.h"

#include "Vectors.h"

namespace morvel {
namespace {

using vectors::Json;

Rect<ScreenSpace> rect(const Json& r) {
    return {r[0], r[1], r[2], r[3]};
}

TEST(BarFrame, RecordedCases) {
    vectors::walk("bar_frame", [](const Json& in) {
        BarFrameInput input;
        input.screenFrame = rect(in["screen"]["frame"]);
        input.screenVisibleFrame = rect(in["screen"]["visible"]);
        input.firstScreenFrame = rect(in["first"]["frame"]);
        input.firstScreenVisibleFrame = rect(in["first"]["visible"]);
        input.edge = *fromRawString<MorvelEdge>(in["edge"].get<std::string>());
        input.compactAtTop = in["compact"];
        input.matchMenuBarHeight = in["match"];
        input.barHeight = in["barHeight"];
        if (!in["probe"].is_null()) input.menuBarHeight = in["probe"].get<double>();
        input.statusBarThickness = in["thickness"];
        input.leftBuffer = in["left"];
        input.rightBuffer = in["right"];
        const auto frame = barFrame(input);
        return Json{{"height", effectiveBarHeight(input)},
                    {"frame", {frame.x, frame.y, frame.width, frame.height}},
                    {"matchMaxY", visibleFrameMaxYForHeightMatch(input)}};
    });
}

}  // namespace
}  // namespace morvel
