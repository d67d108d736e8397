#include "Platform/Linux/UI/Placement.h"

#include <gtest/gtest.h>

#include <random>

#include "Platform/Linux/UI/MenuView.h"
#include "Platform/Linux/UI/PanelStrut.h"

namespace morvel::x11 {
namespace {

using Rects = std::vector<Rect<RootSpace>>;
const Rect<RootSpace> kMonitor{1000, 200, 800, 600};  // right edge 1800, bottom edge 800
const Rect<RootSpace> kBar{1000, 764, 800, 36};

bool isInside(const Rect<RootSpace>& inner, const Rect<RootSpace>& outer) {
    return inner.minX() >= outer.minX() && inner.maxX() <= outer.maxX() && inner.minY() >= outer.minY() &&
           inner.maxY() <= outer.maxY();
}

TEST(PlaceMenu, OpensWhereThereIsRoomAndLeavesABarFree) {
    const Size size{150, 100};
    struct Row {
        const char* why;
        Point<RootSpace> at;
        std::optional<Rect<RootSpace>> bar;
        Point<RootSpace> corner;
    };
    for (const Row& r :
         {Row{"below and right", {1100, 300}, {}, {1100, 300}}, Row{"no room below", {1100, 790}, {}, {1100, 690}},
          Row{"no room on the right", {1790, 300}, {}, {1640, 300}},
          Row{"stands on a bar at the bottom", {1100, 790}, kBar, {1100, 664}},
          Row{"hangs from a bar at the top", {1100, 210}, Rect<RootSpace>{1000, 200, 800, 36}, {1100, 236}}})
        EXPECT_EQ(placeMenu(r.at, size, kMonitor, r.bar).origin(), r.corner) << r.why;
    EXPECT_EQ(placeMenu({1100, 300}, {5000, 5000}, kMonitor, {}), kMonitor) << "never larger than the monitor";
}

TEST(PlaceSubmenu, TurnsToTheLeftAtTheMonitorsEdge) {
    const Size size{150, 100};
    EXPECT_GT(placeSubmenu({1100, 300, 200, 24}, size, 5, kMonitor).minX(), 1290);
    EXPECT_EQ(placeSubmenu({1100, 300, 200, 24}, size, 5, kMonitor).minY(), 295) << "first item level with the opener";
    EXPECT_LT(placeSubmenu({1600, 300, 200, 24}, size, 5, kMonitor).maxX(), 1610);
    EXPECT_EQ(placeSubmenu({1100, 770, 200, 24}, size, 5, kMonitor).maxY(), 800);
}

TEST(PlacePopover, PointsAtItsAnchorAndKeepsOnTheMonitor) {
    const auto above = placePopover({1300, 766, 100, 32}, ui::Edge::Top, {280, 200}, kMonitor);
    EXPECT_EQ(above.window, (Rect<RootSpace>{1210, 566, 280, 200}));
    EXPECT_EQ(above.arrowSide, ui::Edge::Bottom);
    EXPECT_EQ(above.window.x + above.arrowTipX, 1350);

    const auto noRoom = placePopover({1300, 202, 100, 32}, ui::Edge::Top, {280, 200}, kMonitor);
    EXPECT_EQ(noRoom.window.minY(), 234) << "the other side has room";
    EXPECT_EQ(noRoom.arrowSide, ui::Edge::Top);

    for (unsigned seed = 0; seed < 300; ++seed) {
        std::mt19937 random(seed);
        const auto upTo = [&random](unsigned n) { return static_cast<double>(random() % n); };
        const Rect<RootSpace> anchor{1000 + upTo(780), 200 + upTo(560), 20 + upTo(80), 32};
        const auto edge = random() % 2 ? ui::Edge::Top : ui::Edge::Bottom;
        const auto place = placePopover(anchor, edge, {50 + upTo(900), 20 + upTo(900)}, kMonitor);
        EXPECT_TRUE(isInside(place.window, kMonitor)) << "seed " << seed;
        EXPECT_TRUE(place.arrowTipX > 0 && place.arrowTipX < place.window.width) << "seed " << seed;
        EXPECT_FALSE(place.window.minY() < anchor.maxY() && anchor.minY() < place.window.maxY()) << "seed " << seed;
    }
}

TEST(MonitorAt, IsTheOneUnderThePointOrTheNearest) {
    const Rects monitors{{0, 0, 1000, 800}, kMonitor};
    EXPECT_EQ(monitorAt({1500, 300}, monitors), kMonitor);
    EXPECT_EQ(monitorAt({1500, 100}, monitors), kMonitor) << "in the dead corner above it";
    EXPECT_EQ(monitorAt({-5, 100}, monitors), monitors.front());
    EXPECT_TRUE(monitorAt({5, 5}, {}).isEmpty());
}

TEST(PanelStrut, ReservesToTheRootsEdgeButNeverOnAnotherMonitor) {
    const Rect<RootSpace> root{0, 0, 1800, 1000};
    const Rects sideBySide{{0, 0, 1000, 1000}, {1000, 0, 800, 600}};
    const auto atEdge = panelStrut({0, 960, 1000, 40}, ui::Edge::Bottom, root, sideBySide);
    EXPECT_EQ(atEdge, (Strut{.bottom = 40, .bottomStart = 0, .bottomEnd = 999}));
    const auto shorter = panelStrut({1000, 560, 800, 40}, ui::Edge::Bottom, root, sideBySide);
    EXPECT_EQ(shorter, (Strut{.bottom = 440, .bottomStart = 1000, .bottomEnd = 1799})) << "nothing is below it";
    EXPECT_EQ(panelStrut({1000, 0, 800, 30}, ui::Edge::Top, root, sideBySide),
              (Strut{.top = 30, .topStart = 1000, .topEnd = 1799}));

    const Rects stacked{{0, 0, 1800, 500}, {0, 500, 1800, 500}};
    EXPECT_EQ(panelStrut({0, 460, 1800, 40}, ui::Edge::Bottom, root, stacked), std::nullopt);
    EXPECT_EQ(panelStrut({0, 500, 1800, 40}, ui::Edge::Top, root, stacked), std::nullopt);
    EXPECT_TRUE(panelStrut({0, 960, 1800, 40}, ui::Edge::Bottom, root, stacked));
    EXPECT_EQ(panelStrut({0, 1000, 1800, 40}, ui::Edge::Bottom, root, stacked), std::nullopt) << "off the screen";
}

TEST(NextSelectable, SkipsWhatCannotBeChosenAndGoesAround) {
    const auto nothing = [] {};
    const ui::Menu menu{{"disabled", {}},
                        {"first", nothing},
                        ui::MenuItem::separator(),
                        {"submenu", {}, {}, {{"inner", nothing}}},
                        {"disabled", {}}};
    EXPECT_EQ(nextSelectable(menu, {}, Direction::Down), 1u);
    EXPECT_EQ(nextSelectable(menu, {}, Direction::Up), 3u);
    EXPECT_EQ(nextSelectable(menu, 1, Direction::Down), 3u);
    EXPECT_EQ(nextSelectable(menu, 3, Direction::Down), 1u);
    EXPECT_EQ(nextSelectable(menu, 1, Direction::Up), 3u);
    EXPECT_EQ(nextSelectable({{"disabled", {}}}, {}, Direction::Down), std::nullopt);
    EXPECT_EQ(nextSelectable({}, {}, Direction::Up), std::nullopt);
}

}  // namespace
}  // namespace morvel::x11
