// The compact top bar as this host's painter draws it, beside a menu bar that only the simulated desktop has.
#include <gtest/gtest.h>

#include <cmath>
#include <optional>

#include "App/AppDelegate.h"
#include "Platform/Linux/Icons/Symbols.h"
#include "Platform/Linux/UI/ViewCanvas.h"
#include "sim/SimMenuBar.h"

namespace morvel::x11 {
namespace {

using namespace std::chrono_literals;

/// A panel's pixels, for as long as its peer lives.
struct DrawnPanel : ui::PanelPeer {
    DrawnPanel(std::vector<DrawnPanel*>& all, const ui::PanelOptions& shown, ui::View& content, MainLoop& loop,
               const Palette& palette, TextLayouts& layouts)
        : panels(all), options(shown), canvas(loop, palette, layouts, content, delegate()) {
        resize();
        panels.push_back(this);
    }
    ~DrawnPanel() override { std::erase(panels, this); }
    void setFrame(const Rect<ScreenSpace>& frame) override {
        options.frame = frame;
        resize();
    }
    void animateFrame(const Rect<ScreenSpace>& frame, Duration) override { setFrame(frame); }
    void orderFront() override {}
    void orderOut() override {}
    void setReservesSpace(bool) override {}
    /// Blue, green, red and alpha of what is painted.
    const uint8_t* pixel(int x, int y) const {
        cairo_surface_t* surface = canvas.surface();
        return cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface) + 4 * x;
    }
    void resize() { canvas.setGeometry(int(options.frame.width), int(options.frame.height), {}); }
    static ViewCanvas::Delegate delegate() {
        return {.paintBackdrop = {},
                .present = [](const DamageRegion&) {},
                .laidOut = [] {},
                .changedTexts = [] {},
                .willDetach = [](ui::View&) {}};
    }

    std::vector<DrawnPanel*>& panels;
    ui::PanelOptions options;
    ViewCanvas canvas;
};

class DrawnToolkit : public sim::SimToolkit {
public:
    explicit DrawnToolkit(MainLoop& loop) : SimToolkit(loop), loop_(loop) {}
    std::unique_ptr<ui::PanelPeer> makePanel(const ui::PanelOptions& options, ui::View& content) override {
        return std::make_unique<DrawnPanel>(panels, options, content, loop_, palette, layouts_);
    }
    Size textSize(std::string_view text, const ui::Font& font) override { return layouts_.lineSize(text, font); }

    Palette palette;
    std::vector<DrawnPanel*> panels;  // in the order they were made, the last one in front

private:
    MainLoop& loop_;
    TextLayouts layouts_;
};

/// Symbols as they are, and nothing else.
class DrawnIcons : public sim::SimIcons {
public:
    ui::ImageRef applicationIcon(const std::string&) override { return nullptr; }
    ui::ImageRef processIcon(ProcessID) override { return nullptr; }
    ui::ImageRef fileIcon(const std::string&) override { return nullptr; }
    ui::ImageRef symbol(const std::string& name, double pointSize) override { return drawSymbol(name, pointSize); }
    ui::ImageRef empty(Size) override { return nullptr; }
    ui::ImageRef baked(const ui::ImageRef&, Size) override { return nullptr; }
};

/// What is seen of the top of a display, whose menu bar shows titles up to 400 and status items from 1190 on.
class CompactTopPicture : public testing::TestWithParam<Appearance> {
protected:
    CompactTopPicture() {
        menus_.setTitles(editor_, {10, 40, 100, 300}, 400);
        menus_.setItems(desktop_.launch("Extra", {.policy = ActivationPolicy::Accessory}), {60, 50, 40, 50, 50},
                        {kWidth, 0});
        desktop_.defaults().set("barEdge", {std::string("top")});
        desktop_.defaults().set("autoDetectMacOSMenuWidth", {true});
        toolkit_.palette.appearance = GetParam();
        for (const char* title : {"Letter to nobody in particular", "Notes"}) editor_.open({.title = title});
        editor_.activate();
    }

    void start() {
        const Platform& p = desktop_.platform();
        delegate_.emplace(Platform{.mainLoop = p.mainLoop,
                                   .log = p.log,
                                   .accessibility = p.accessibility,
                                   .windowServer = p.windowServer,
                                   .workspace = p.workspace,
                                   .screens = p.screens,
                                   .defaults = p.defaults,
                                   .icons = icons_,
                                   .toolkit = toolkit_,
                                   .terminate = [] {},
                                   .makeWorkQueue = p.makeWorkQueue,
                                   .installedApplications = p.installedApplications,
                                   .wallClock = p.wallClock,
                                   .httpClient = p.httpClient,
                                   .programVersion = std::nullopt,
                                   .systemVersion = std::nullopt});
        delegate_->applicationDidFinishLaunching();
        desktop_.run(1s);
    }

    DrawnPanel& bar() { return *toolkit_.panels.at(0); }
    DrawnPanel& toggle() { return *toolkit_.panels.at(1); }
    void toggleExpansion() {
        ui::View& button = toggle().canvas.root();
        ASSERT_TRUE(button.accessibilityPress());
        desktop_.run(1s);
    }
    struct Chevron {
        double tip = 0;     ///< how far the middle rows' ink lies to the right of the others', in points
        double bright = 0;  ///< of its colour, from 0 to 1
    };
    /// What is painted in the toggle's panel, as an arrow.
    Chevron paintedChevron() {
        toggle().canvas.paintNow();
        const auto [width, height] = toggle().options.frame.size();
        double sums[2] = {}, counts[2] = {}, green = 0, alpha = 0;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const uint8_t* pixel = toggle().pixel(x, y);
                const int isMiddle = std::abs(y + 0.5 - height / 2.0) < 2;
                sums[isMiddle] += x * double(pixel[3]);
                counts[isMiddle] += pixel[3];
                green += pixel[1];
                alpha += pixel[3];
            }
        return {sums[1] / counts[1] - sums[0] / counts[0], green / alpha};
    }

    static constexpr double kWidth = 1440;
    sim::Desktop desktop_{sim::oneDisplay(kWidth, 900)};
    sim::SimMenuBar menus_{desktop_};
    sim::SimApp& editor_ = desktop_.launch("Editor");
    DrawnIcons icons_;
    DrawnToolkit toolkit_{desktop_.mainLoop()};
    std::optional<AppDelegate> delegate_;
};

TEST_P(CompactTopPicture, TheToggleIsSeenAtTheBarsEnd) {
    start();
    ASSERT_EQ(toolkit_.panels.size(), 2u);
    EXPECT_EQ(toggle().options.frame.maxX(), bar().options.frame.maxX());
    EXPECT_GT(paintedChevron().tip, 1) << "the status items are behind it, to the right";
    EXPECT_EQ(paintedChevron().bright > 0.5, GetParam() == Appearance::Dark);
    toggleExpansion();
    EXPECT_EQ(toggle().options.frame.maxX(), bar().options.frame.maxX());
    EXPECT_LT(paintedChevron().tip, -1);

    // Beside a camera housing.
    toggleExpansion();
    Screen& screen = desktop_.screens().list[0];
    screen.auxiliaryTopLeft = {0, 876, 650, 24};
    screen.auxiliaryTopRight = {790, 876, 650, 24};
    desktop_.screens().changes.emit();
    desktop_.run(1s);
    bar().canvas.paintNow();
    const Rect<ScreenSpace> frame = bar().options.frame;
    const int left = int(651 - frame.minX()), right = int(790 - frame.minX());
    int ink = 0;
    for (int y = 0; y < frame.height; ++y)
        for (int x = left; x < right; ++x)
            ink += !std::equal(bar().pixel(x, y), bar().pixel(x, y) + 4, bar().pixel(left, y));
    EXPECT_EQ(ink, 0) << "nothing but the bar's background";
}

INSTANTIATE_TEST_SUITE_P(Appearances, CompactTopPicture, testing::Values(Appearance::Light, Appearance::Dark));

}  // namespace
}  // namespace morvel::x11
