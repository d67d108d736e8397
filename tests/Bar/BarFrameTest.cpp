#include "Bar/BarFrame.h"

#include "Vectors.h"

namespace morvel {
namespace {

using vectors::Json;

const auto& rect = vectors::rect<ScreenSpace>;

TEST(BarFrame, RecordedCases) {
    vectors::walk("bar_frame", [](const Json& in) {
        BarFrameInput input;
        input.screenFrame = rect(in["screen"]["frame"]);
        input.screenVisibleFrame = rect(in["screen"]["visible"]);
        input.firstScreenFrame = rect(in["first"]["frame"]);
        input.firstScreenVisibleFrame = rect(in["first"]["visible"]);
        input.edge = vectors::choice<MorvelEdge>(in["edge"]);
        input.compactAtTop = in["compact"];
        input.matchMenuBarHeight = in["match"];
        input.barHeight = in["barHeight"];
        input.menuBarHeight = vectors::optional<double>(in["probe"]);
        input.statusBarThickness = in["thickness"];
        input.leftBuffer = in["left"];
        input.rightBuffer = in["right"];
        return Json{{"height", effectiveBarHeight(input)},
                    {"frame", vectors::json(barFrame(input))},
                    {"matchMaxY", visibleFrameMaxYForHeightMatch(input)}};
    });
}

}  // namespace
}  // namespace morvel
