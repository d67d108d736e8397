#include "Platform/Linux/UI/ViewCanvas.h"

#include <gtest/gtest.h>

#include <optional>

#include "UI/VisualEffectView.h"
#include "sim/FakeMainLoop.h"
#include "sim/SimToolkit.h"

namespace morvel::x11 {
namespace {

using namespace std::chrono_literals;

struct MeasuringToolkit : sim::SimToolkit {
    using SimToolkit::SimToolkit;
    Size textSize(std::string_view text, const ui::Font& font) override { return layouts.lineSize(text, font); }
    TextLayouts layouts;
};

// A bar of 400 × 40 pixels with a button on the left that has a label, and a bare button on the right.
class ViewCanvasTest : public testing::Test {
protected:
    ViewCanvasTest() {
        bar_.setFrame({0, 0, 400, 40});
        button_.setFrame({10, 4, 120, 32});
        button_.setBackground(ui::customColor({1, 0, 0, 1}));
        label_.setFrame({30, 0, 80, 32});
        label_.setText("before");
        other_.setFrame({200, 4, 100, 32});
        other_.setBackground(ui::customColor({0, 0, 1, 1}));
        bar_.addSubview(button_);
        bar_.addSubview(other_);
        button_.addSubview(label_);
        canvas_.emplace(loop_, palette_, toolkit_.layouts, bar_,
                        ViewCanvas::Delegate{.paintBackdrop = {},
                                             .present = [this](const std::vector<PaintedPart>& parts) { show(parts); },
                                             .laidOut = [] {},
                                             .changedTexts = [] {},
                                             .willDetach = [](ui::View&) {}});
        canvas_->setGeometry(400, 40, {});
        loop_.advance(0ms);
        frames_.clear();
        loop_.advance(1s);
    }

    using Rects = std::vector<PixelRect>;

    void show(const std::vector<PaintedPart>& parts) {
        cairo_t* cr = cairo_create(screen_.get());
        cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
        Rects rects;
        for (const PaintedPart& part : parts) {
            cairo_set_source_surface(cr, part.pixels.get(), part.at.x, part.at.y);
            cairo_rectangle(cr, part.at.x, part.at.y, part.at.width, part.at.height);
            cairo_fill(cr);
            rects.push_back(part.at);
        }
        cairo_destroy(cr);
        cairo_surface_flush(screen_.get());
        frames_.push_back(rects);
    }
    uint32_t pixel(int x, int y) const {
        const auto* data = cairo_image_surface_get_data(screen_.get());
        return reinterpret_cast<const uint32_t*>(data + y * cairo_image_surface_get_stride(screen_.get()))[x];
    }
    Rects lastDamage() const { return frames_.empty() ? Rects() : frames_.back(); }

    static constexpr uint32_t kRed = 0xFFFF0000, kBlue = 0xFF0000FF, kNothing = 0;

    sim::FakeMainLoop loop_;
    Palette palette_;
    MeasuringToolkit toolkit_{loop_};
    ui::View bar_, button_, other_;
    ui::Label label_{toolkit_};
    std::vector<Rects> frames_;
    SurfacePtr screen_{cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 400, 40)};
    std::optional<ViewCanvas> canvas_;
};

TEST_F(ViewCanvasTest, ATitleRepaintsItsLabelAloneAndIdleArmsNothing) {
    EXPECT_EQ(loop_.armedTimers(), 0u);
    label_.setText("after");
    loop_.advance(0ms);
    EXPECT_EQ(lastDamage(), (Rects{{40, 4, 80, 32}}));
    EXPECT_EQ(pixel(12, 20), kRed) << "around the label everything is as it was";
    EXPECT_EQ(loop_.armedTimers(), 0u);

    button_.setTooltip("nothing of this is painted");
    loop_.advance(1s);
    EXPECT_EQ(frames_.size(), 1u);
}

TEST_F(ViewCanvasTest, WhatMovesHidesOrLeavesIsPaintedWhereItWasAndWhereItIs) {
    other_.setFrame({250, 4, 100, 32});
    loop_.advance(20ms);
    EXPECT_EQ(lastDamage(), (Rects{{200, 4, 150, 32}}));
    EXPECT_EQ(pixel(210, 20), kNothing);
    EXPECT_EQ(pixel(345, 20), kBlue);

    other_.setHidden(true);
    loop_.advance(20ms);
    EXPECT_EQ(lastDamage(), (Rects{{250, 4, 100, 32}}));
    EXPECT_EQ(pixel(260, 20), kNothing);

    frames_.clear();
    other_.setFrame({200, 4, 100, 32});
    loop_.advance(20ms);
    EXPECT_TRUE(frames_.empty()) << "nobody sees a hidden view move";

    button_.removeFromParent();
    loop_.advance(20ms);
    EXPECT_EQ(lastDamage(), (Rects{{10, 4, 120, 32}}));
    EXPECT_EQ(pixel(12, 20), kNothing);
}

TEST_F(ViewCanvasTest, ChangesOfOneTurnAreOneFrameAndAStormWaitsForTheDisplay) {
    for (int i = 0; i < 100; ++i) {
        label_.setText(std::to_string(i));
        other_.setAlpha(i / 100.0);
    }
    loop_.advance(0ms);
    EXPECT_EQ(frames_.size(), 1u) << "at once, since the last frame is old";
    label_.setText("and this");
    loop_.advance(0ms);
    EXPECT_EQ(frames_.size(), 2u) << "one more may be ahead of the display";
    for (int i = 0; i < 100; ++i) {
        label_.setText(std::to_string(i));
        loop_.advance(1ms);
    }
    EXPECT_LE(frames_.size(), 2u + 100 / 16);
    EXPECT_GE(frames_.size(), 2u + 100 / 16 - 1);
    loop_.advance(16ms);
    EXPECT_EQ(loop_.armedTimers(), 0u) << "the last change is shown, and nothing waits";
}

TEST_F(ViewCanvasTest, SubviewsAreClippedAndBlendedAsAGroup) {
    ui::View child;
    child.setFrame({80, 0, 200, 32});
    child.setBackground(ui::customColor({0, 1, 0, 1}));
    button_.addSubview(child);
    button_.setClipsToBounds(true);
    button_.setAlpha(0.5);
    loop_.advance(20ms);
    EXPECT_EQ(pixel(140, 20), kNothing) << "outside the button";
    EXPECT_EQ(pixel(120, 20), 0x80008000u) << "the button's red does not shine through its green child";
    button_.removeFromParent();
}

TEST(ShownText, IsOneLineOfValidTextOfBoundedLength) {
    EXPECT_EQ(shownText("a\nb\tc\r\xE2\x80\xA8"
                        "d"),
              "a b c  d");
    EXPECT_EQ(shownText("ok \xFF\xC3(").substr(0, 6), "ok \xEF\xBF\xBD");
    EXPECT_EQ(shownText(std::string(1 << 20, 'x')).size(), kMaxShownCharacters);
    std::string wide;
    for (int i = 0; i < 2000; ++i) wide += "\xE2\x82\xAC";
    EXPECT_EQ(shownText(wide), wide.substr(0, 3 * kMaxShownCharacters)) << "no character is torn by the bound";
}

}  // namespace
}  // namespace morvel::x11
