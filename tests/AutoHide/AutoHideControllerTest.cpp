// When a bar hides and comes back, as recorded traces.
#include <gtest/gtest.h>

#include "AutoHide/AutoHideController.h"
#include "AutoHide/AutoHideGeometry.h"
#include "Vectors.h"
#include "sim/Desktop.h"

namespace morvel {
namespace {

using vectors::Json;

constexpr Rect<ScreenSpace> kBar{0, 0, 1440, 44};

/// Writes down each time the panel is put elsewhere.
class RecordedPanel {
public:
    explicit RecordedPanel(ui::Toolkit& toolkit) : panel_(toolkit, {.frame = kBar}, content_) {}
    ui::Panel& panel() { return panel_; }

    Json newSlides(const sim::SimPanel& shown) {
        Json slides = Json::array();
        if (shown.moves > moves_)
            slides.push_back((shown.frame == kBar ? "on" : "off") + std::string(shown.slides > slides_ ? "+" : "-"));
        moves_ = shown.moves;
        slides_ = shown.slides;
        return slides;
    }

private:
    int moves_ = 0;
    int slides_ = 0;
    ui::View content_;
    ui::Panel panel_;
};

/// A desktop whose pointer is where the trace says, in the bar's middle or in the display's.
class TracedToolkit : public sim::SimToolkit {
public:
    using SimToolkit::SimToolkit;
    std::optional<Point<ScreenSpace>> pointerLocation() override {
        return Point<ScreenSpace>{720, isInside ? 22.0 : 450.0};
    }
    bool isInside = false;
};

Json trace(const Json& events) {
    sim::Desktop desktop;
    TracedToolkit toolkit(desktop.mainLoop());
    RecordedPanel bar(toolkit);
    AutoHideController controller({toolkit, desktop.mainLoop(), desktop.screens()}, MorvelEdge::Bottom,
                                  {bar.panel(), [] { return kBar; }});
    const auto point = [&](size_t panel) -> ui::EventRouter& { return toolkit.panels().at(panel)->surface.router(); };
    Json results = Json::array();
    for (const Json& event : events) {
        const std::string what = event[0];
        if (what == "start") controller.start();
        if (what == "stop") controller.stop();
        if (what == "strip") {
            toolkit.isInside = true;
            point(1).pointerMoved({5, 1});
            point(1).pointerExited();
        }
        if (what == "enter" || what == "exit") {
            toolkit.isInside = what == "enter";
            toolkit.isInside ? point(0).pointerMoved({5, 1}) : point(0).pointerExited();
        }
        if (what == "pin") controller.pinReveal();
        if (what == "unpin") {
            toolkit.isInside = event[1];
            controller.unpinReveal();
        }
        if (what == "adv") desktop.run(std::chrono::milliseconds(event[1]));
        const sim::SimPanel& shown = *toolkit.panels().at(0);
        results.push_back({bar.newSlides(shown), controller.isShown(), controller.revealPinCount()});
    }
    return results;
}

TEST(AutoHide, FollowsTheRecordedTraces) {
    vectors::walk("autohide_traces", trace);
}

TEST(AutoHide, ASecondPanelMovesWithTheBarAndHoldsIt) {
    sim::Desktop desktop;
    sim::SimToolkit& toolkit = desktop.toolkit();
    const Rect<ScreenSpace> bar{200, 870, 800, 30}, companion{1100, 876, 100, 24};
    ui::View barContent, companionContent;
    ui::Panel barPanel(toolkit, {.frame = bar}, barContent);
    ui::Panel companionPanel(toolkit, {.frame = companion, .kind = ui::PanelKind::Companion}, companionContent);
    AutoHideController controller({toolkit, desktop.mainLoop(), desktop.screens()}, MorvelEdge::Top,
                                  {barPanel, [&] { return bar; }},
                                  AutoHidePanel{companionPanel, [&] { return companion; }});
    controller.start();
    EXPECT_EQ(barPanel.frame(), (Rect<ScreenSpace>{200, 900, 800, 30}));
    EXPECT_EQ(companionPanel.frame(), (Rect<ScreenSpace>{1100, 906, 100, 24})) << "as far as the bar";
    EXPECT_EQ(toolkit.panels().at(2)->frame, (Rect<ScreenSpace>{200, 898, 800, 2})) << "the strip is the bar's alone";
    toolkit.moveTo(toolkit.panels().at(2)->surface.root());
    EXPECT_EQ(companionPanel.frame(), companion);
    toolkit.moveTo(barContent);
    toolkit.moveTo(companionContent);
    desktop.run(std::chrono::seconds(10));
    EXPECT_TRUE(controller.isShown());
    toolkit.leave();
    desktop.run(std::chrono::seconds(1));
    EXPECT_FALSE(controller.isShown());
    EXPECT_EQ(companionPanel.frame().y, 906);
}

TEST(AutoHide, TheStripIsWhereItWasRecorded) {
    vectors::walk("reveal_strip", [](const Json& input) -> Json {
        return vectors::json(
            revealStrip(vectors::rect<ScreenSpace>(input["bar"]), vectors::choice<MorvelEdge>(input["edge"])));
    });
}

}  // namespace
}  // namespace morvel
