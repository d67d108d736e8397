// The compact top bar as this host's painter draws it, beside a menu bar that only the simulated desktop has.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
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

/// Symbols as they are, and a coloured square for each application.
class DrawnIcons : public sim::SimIcons {
public:
    ui::ImageRef applicationIcon(const std::string& name) override {
        cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 32, 32);
        cairo_t* cr = cairo_create(surface);
        const size_t hash = std::hash<std::string>{}(name);
        cairo_set_source_rgb(cr, double(hash & 255) / 255, double(hash >> 8 & 255) / 255, 0.6);
        cairo_rectangle(cr, 2, 2, 28, 28);
        cairo_fill(cr);
        cairo_destroy(cr);
        return std::make_shared<XImage>(SurfacePtr(surface), Size{32, 32});
    }
    ui::ImageRef processIcon(ProcessID pid) override { return applicationIcon(std::to_string(pid.value)); }
    ui::ImageRef fileIcon(const std::string& path) override { return applicationIcon(path); }
    ui::ImageRef symbol(const std::string& name, double pointSize) override { return drawSymbol(name, pointSize); }
    ui::ImageRef empty(Size) override { return nullptr; }
    ui::ImageRef baked(const ui::ImageRef& image, Size) override { return image; }
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
        cairo_surface_t* surface = toggle().canvas.surface();
        cairo_surface_flush(surface);
        const int height = cairo_image_surface_get_height(surface);
        double sums[2] = {}, counts[2] = {}, green = 0, alpha = 0;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < cairo_image_surface_get_width(surface); ++x) {
                const uint8_t* pixel = cairo_image_surface_get_data(surface) +
                                       size_t(y) * size_t(cairo_image_surface_get_stride(surface)) + 4 * size_t(x);
                const int isMiddle = std::abs(y + 0.5 - height / 2.0) < 2;
                sums[isMiddle] += x * double(pixel[3]);
                counts[isMiddle] += pixel[3];
                green += pixel[1];
                alpha += pixel[3];
            }
        return {sums[1] / counts[1] - sums[0] / counts[0], green / alpha};
    }
    void savePicture(const std::string& name);

    static constexpr double kWidth = 1440, kHeight = 900;
    sim::Desktop desktop_{sim::oneDisplay(kWidth, kHeight)};
    sim::SimMenuBar menus_{desktop_};
    sim::SimApp& editor_ = desktop_.launch("Editor");
    DrawnIcons icons_;
    DrawnToolkit toolkit_{desktop_.mainLoop()};
    std::optional<AppDelegate> delegate_;
};

void CompactTopPicture::savePicture(const std::string& name) {
    const char* folder = std::getenv("MORVEL_PICTURES");
    if (!folder) return;
    const bool isDark = GetParam() == Appearance::Dark;
    constexpr int kShown = 60;
    cairo_surface_t* picture = cairo_image_surface_create(CAIRO_FORMAT_RGB24, int(kWidth), kShown);
    cairo_t* cr = cairo_create(picture);
    isDark ? cairo_set_source_rgb(cr, 0.15, 0.2, 0.3) : cairo_set_source_rgb(cr, 0.55, 0.7, 0.85);
    cairo_paint(cr);
    isDark ? cairo_set_source_rgba(cr, 0, 0, 0, 0.5) : cairo_set_source_rgba(cr, 1, 1, 1, 0.6);
    cairo_rectangle(cr, 0, 0, kWidth, 24);
    cairo_fill(cr);
    isDark ? cairo_set_source_rgb(cr, 1, 1, 1) : cairo_set_source_rgb(cr, 0, 0, 0);
    cairo_set_font_size(cr, 13);
    const std::pair<double, const char*> titles[] = {{10, "@"}, {40, "Editor"}, {100, "File   Edit"}, {300, "Help"}};
    for (const auto& [x, text] : titles) {
        cairo_move_to(cr, x, 17);
        cairo_show_text(cr, text);
    }
    for (const double x : {1195.0, 1245.0, 1295.0, 1335.0, 1385.0}) {
        cairo_rectangle(cr, x, 6, 20, 12);
        cairo_stroke(cr);
    }
    for (DrawnPanel* panel : toolkit_.panels) {
        panel->canvas.paintNow();
        cairo_set_source_surface(cr, panel->canvas.surface(), panel->options.frame.x,
                                 kHeight - panel->options.frame.maxY());
        cairo_paint(cr);
    }
    const auto& screen = desktop_.screens().list[0];
    if (screen.auxiliaryTopLeft) {
        cairo_set_source_rgb(cr, 0, 0, 0);
        cairo_rectangle(cr, screen.auxiliaryTopLeft->maxX(), 0,
                        screen.auxiliaryTopRight->minX() - screen.auxiliaryTopLeft->maxX(), 24);
        cairo_fill(cr);
    }
    cairo_destroy(cr);
    const std::string path = std::string(folder) + "/" + name + (isDark ? "-dark.png" : "-light.png");
    cairo_surface_write_to_png(picture, path.c_str());
    cairo_surface_destroy(picture);
}

TEST_P(CompactTopPicture, TheToggleIsSeenAtTheBarsEnd) {
    start();
    ASSERT_EQ(toolkit_.panels.size(), 2u);
    EXPECT_EQ(toggle().options.frame.maxX(), bar().options.frame.maxX());
    EXPECT_GT(paintedChevron().tip, 1) << "the status items are behind it, to the right";
    EXPECT_EQ(paintedChevron().bright > 0.5, GetParam() == Appearance::Dark);
    savePicture("collapsed");
    toggleExpansion();
    EXPECT_EQ(toggle().options.frame.maxX(), bar().options.frame.maxX());
    EXPECT_LT(paintedChevron().tip, -1);
    savePicture("expanded");

    // Beside a camera housing.
    toggleExpansion();
    Screen& screen = desktop_.screens().list[0];
    screen.auxiliaryTopLeft = {0, 876, 650, 24};
    screen.auxiliaryTopRight = {790, 876, 650, 24};
    desktop_.screens().changes.emit();
    desktop_.run(1s);
    savePicture("notch");
    const auto inkUnderHousing = [&] {
        bar().canvas.paintNow();
        const Rect<ScreenSpace> frame = bar().options.frame;
        const auto pixel = [&](double x, double y) {
            const uint8_t* row = cairo_image_surface_get_data(bar().canvas.surface()) +
                                 size_t(y) * size_t(cairo_image_surface_get_stride(bar().canvas.surface()));
            return std::vector<uint8_t>(row + 4 * size_t(x - frame.minX()), row + 4 * size_t(x - frame.minX()) + 4);
        };
        int ink = 0;
        for (double y = 0; y < frame.height; ++y)
            for (double x = 651; x < 790; ++x) ink += pixel(x, y) != pixel(651, y);
        return ink;
    };
    EXPECT_EQ(inkUnderHousing(), 0) << "nothing but the bar's background";
}

INSTANTIATE_TEST_SUITE_P(Appearances, CompactTopPicture, testing::Values(Appearance::Light, Appearance::Dark));

}  // namespace
}  // namespace morvel::x11
