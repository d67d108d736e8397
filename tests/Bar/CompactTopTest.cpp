// How wide the compact top bar's gaps are, and which windows and elements count as part of the menu bar.
#include <algorithm>

#include "Bar/MenuBar/CompactTopBuffer.h"
#include "Bar/MenuBar/CompactTopLeftBuffer.h"
#include "Bar/MenuBar/MacOSMenuExtrasDetector.h"
#include "Bar/MenuBar/MacOSMenuTitlesDetector.h"
#include "Bar/MenuBar/MenuBarFrameProbe.h"
#include "Vectors.h"
#include "sim/FakeDefaults.h"

namespace morvel {
namespace {

using vectors::Json;

const auto& rect = vectors::rect<ScreenSpace>;
const auto& number = vectors::optional<double>;

TEST(CompactTopBuffers, RecordedCases) {
    vectors::walk("compact_buffers", [](const Json& in) {
        sim::FakeDefaults defaults;
        SettingsStore settings(defaults);
        settings.autoDetectMacOSMenuWidth.set(in["autoMenu"]);
        settings.autoDetectMacOSItemsWidth.set(in["autoItems"]);
        settings.compactTopRightBuffer.set(in["buffer"]);
        settings.compactTopCollapsedItemCount.set(in["collapsedCount"]);
        const Screen screen{DisplayID{1}, "", rect(in["screen"]["frame"]), rect(in["screen"]["visible"])};
        const StatusItemXs items{.listed = in["listXs"].get<std::vector<double>>(),
                                 .probedLeftmost = number(in["axLeftmostX"]),
                                 .probedCollapsed = number(in["axCollapsedX"])};
        return Json{{"left", CompactTopLeftBuffer::effective(screen, settings, number(in["menuTitleX"]))},
                    {"right", CompactTopBuffer::effective(screen, settings, items, in["expanded"])}};
    });
}

// A display left of and above the first one, with a menu bar of its own that is 24 points high.
constexpr double kFirstHeight = 900;
const Screen kUpperLeft{DisplayID{2}, "", {-1280, 700, 1280, 800}, {-1280, 700, 1280, 776}};
constexpr Rect<AXSpace> kStrip{-1280, -600, 1280, 24};
constexpr ProcessID kOther{50};
constexpr ProcessID kOurs{2};

ListedWindow window(const Rect<AXSpace>& bounds, std::optional<int> layer = 25, ProcessID owner = kOther) {
    return {.number = WindowNumber{1}, .owner = owner, .layer = layer, .bounds = bounds, .ownerName = {}, .name = {}};
}

TEST(CompactTopDetectors, OnlyStatusItemsOfTheDisplayCount) {
    using namespace MacOSMenuExtrasDetector;
    const Rect<AXSpace> area = statusArea(kUpperLeft, kFirstHeight);
    EXPECT_EQ(area, kStrip);
    const std::vector<ListedWindow> windows = {
        window({-60, -600, 60, 24}),
        window({-100, -599, 40, 22}),
        window({-30, -600, 30, 24}, 24),            // a part of the menu bar's own window
        window({-31, -600, 30, 24}, 0),             // an ordinary window
        window({-32, -600, 30, 24}, std::nullopt),  // whatever has no layer
        window({-330, -580, 320, 90}),              // a banner below the strip
        window({1300, 0, 60, 24}),                  // an item on the other display
        window({-5000, -600, 4900, 24}),            // the long item of a program that hides others
        window({-1280, -600, 1280, 24}),            // another program's bar
        window({-200, -600, 100, 4}),               // a line along the edge
        window({-300, -600, 0, 24}),                // without size
        window({-900, -600, 700, 24}, 25, kOurs),   // our bar
        window({-200, -600, 21, 24}, 25, kOurs),    // our toggle
        window({-140, -600, 40, 24}, 25, kOurs),    // our status item
    };
    EXPECT_EQ(statusItemXsViaWindowList(windows, area, kOurs), (std::vector<double>{-140, -100, -60}));

    Screen withCamera = kUpperLeft;
    withCamera.auxiliaryTopLeft = {-1280, 1476, 560, 24};
    withCamera.auxiliaryTopRight = {-120, 1476, 120, 24};
    EXPECT_EQ(statusItemXsViaWindowList(windows, statusArea(withCamera, kFirstHeight), kOurs),
              (std::vector<double>{-100, -60}))
        << "what stands left of the camera housing is no item";
    EXPECT_EQ(probe({{-60, -600, 60, 24}, {1300, 0, 60, 24}, {-100, -599, 40, 22}, {0, 0, 0, 0}}, area),
              (std::vector<double>{-100, -60}));

    const std::vector<double> xs{1000, 1100, 1200};
    EXPECT_EQ(systemAreaLeftmostX(xs, 2), 1100);
    EXPECT_EQ(systemAreaLeftmostX(xs, 9), 1000);
    EXPECT_EQ(systemAreaLeftmostX({}, 2), std::nullopt);
}

TEST(CompactTopDetectors, TitlesBelongToTheDisplayOnWhichTheyBegin) {
    using MacOSMenuTitlesDetector::rightmostMenuTitleX;
    EXPECT_EQ(rightmostMenuTitleX(Rect<AXSpace>{-100, -600, 150, 24}, kStrip), 50) << "though it ends on another";
    EXPECT_EQ(rightmostMenuTitleX(Rect<AXSpace>{400, 0, 50, 24}, kStrip), std::nullopt);
    EXPECT_EQ(rightmostMenuTitleX(Rect<AXSpace>{-1000, 0, 50, 24}, kStrip), std::nullopt) << "of a display below";
    EXPECT_EQ(rightmostMenuTitleX(std::nullopt, kStrip), std::nullopt);
}

TEST(CompactTopDetectors, TheMenuBarSpansItsDisplay) {
    const auto height = [](const std::vector<ListedWindow>& windows) -> double {
        const auto frame = MenuBarFrameProbe::frame(windows, kUpperLeft, kFirstHeight);
        return frame ? frame->height : 0;
    };
    EXPECT_EQ(height({window({0, 0, 1440, 37}, 24), window({-1280, -600, 1280, 30}, 24)}), 30);
    EXPECT_EQ(height({window({-1280, -630, 1280, 30}, 24)}), 0) << "slid out of sight";
    EXPECT_EQ(height({window({-1280, -600, 1280, 30}, 25)}), 0) << "a bar over it";
    EXPECT_EQ(height({window({-1280, -600, 1280, 800}, 24)}), 0) << "something as large as the display";
    EXPECT_EQ(height({window({-1280, -600, 300, 400}, 24)}), 0) << "an open menu";
    EXPECT_EQ(MenuBarFrameProbe::frame({window({-1280, -600, 1280, 30}, 24)}, kUpperLeft, kFirstHeight),
              (Rect<ScreenSpace>{-1280, 1470, 1280, 30}));
}

}  // namespace
}  // namespace morvel
