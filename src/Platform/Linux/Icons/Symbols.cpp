#include "Platform/Linux/Icons/Symbols.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <numbers>

namespace morvel::x11 {

namespace {

// Symbols are shown at their own size on ordinary displays and doubled on dense ones.
constexpr double kPixelsPerPoint = 2;
constexpr double kSmallest = 1, kLargest = 512;
constexpr double kFullTurn = 2 * std::numbers::pi;

struct Spot {
    double x, y;
};

// All drawings are on a square of side 1, y down.
void polygon(cairo_t* cr, std::initializer_list<Spot> spots) {
    for (const Spot& spot : spots) cairo_line_to(cr, spot.x, spot.y);
    cairo_close_path(cr);
    cairo_fill(cr);
}

void strokeLine(cairo_t* cr, double width, std::initializer_list<Spot> spots) {
    cairo_set_line_width(cr, width);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
    for (const Spot& spot : spots) cairo_line_to(cr, spot.x, spot.y);
    cairo_stroke(cr);
}

void fillBar(cairo_t* cr, double x, double y, double width, double height) {
    cairo_rectangle(cr, x, y, width, height);
    cairo_fill(cr);
}

void drawChevronUp(cairo_t* cr) {
    strokeLine(cr, 0.12, {{0.18, 0.64}, {0.5, 0.36}, {0.82, 0.64}});
}

void drawChevronDown(cairo_t* cr) {
    strokeLine(cr, 0.12, {{0.18, 0.36}, {0.5, 0.64}, {0.82, 0.36}});
}

void drawChevronLeft(cairo_t* cr) {
    strokeLine(cr, 0.12, {{0.62, 0.18}, {0.34, 0.5}, {0.62, 0.82}});
}

void drawChevronRight(cairo_t* cr) {
    strokeLine(cr, 0.12, {{0.38, 0.18}, {0.66, 0.5}, {0.38, 0.82}});
}

void drawCloseCircle(cairo_t* cr) {
    cairo_arc(cr, 0.5, 0.5, 0.46, 0, kFullTurn);
    cairo_fill(cr);
    // The cross is cut out, so that what lies below shows through it.
    cairo_set_operator(cr, CAIRO_OPERATOR_CLEAR);
    strokeLine(cr, 0.1, {{0.33, 0.33}, {0.67, 0.67}});
    strokeLine(cr, 0.1, {{0.67, 0.33}, {0.33, 0.67}});
}

void drawDashedApp(cairo_t* cr) {
    constexpr double kNear = 0.1, kFar = 0.9, kRadius = 0.22;
    constexpr double kQuarter = std::numbers::pi / 2;
    const std::array dashes{0.13, 0.09};
    cairo_set_dash(cr, dashes.data(), int(dashes.size()), 0);
    cairo_set_line_width(cr, 0.07);
    cairo_arc(cr, kFar - kRadius, kNear + kRadius, kRadius, -kQuarter, 0);
    cairo_arc(cr, kFar - kRadius, kFar - kRadius, kRadius, 0, kQuarter);
    cairo_arc(cr, kNear + kRadius, kFar - kRadius, kRadius, kQuarter, 2 * kQuarter);
    cairo_arc(cr, kNear + kRadius, kNear + kRadius, kRadius, 2 * kQuarter, 3 * kQuarter);
    cairo_close_path(cr);
    cairo_stroke(cr);
}

constexpr std::array kGridCentres{0.2, 0.5, 0.8};

void drawCircleGrid(cairo_t* cr) {
    for (const double y : kGridCentres) {
        for (const double x : kGridCentres) {
            cairo_arc(cr, x, y, 0.11, 0, kFullTurn);
            cairo_fill(cr);
        }
    }
}

/// A fruit with a leaf.
void drawApple(cairo_t* cr) {
    cairo_arc(cr, 0.36, 0.6, 0.27, 0, kFullTurn);
    cairo_arc(cr, 0.64, 0.6, 0.27, 0, kFullTurn);
    cairo_rectangle(cr, 0.36, 0.42, 0.28, 0.36);
    cairo_fill(cr);
    cairo_move_to(cr, 0.48, 0.3);
    cairo_curve_to(cr, 0.46, 0.16, 0.56, 0.06, 0.7, 0.06);
    cairo_curve_to(cr, 0.71, 0.2, 0.62, 0.3, 0.48, 0.3);
    cairo_fill(cr);
}

void drawSquareGrid(cairo_t* cr) {
    for (const double y : kGridCentres)
        for (const double x : kGridCentres) fillBar(cr, x - 0.115, y - 0.115, 0.23, 0.23);
}

void drawMagnifier(cairo_t* cr) {
    cairo_set_line_width(cr, 0.09);
    cairo_arc(cr, 0.42, 0.42, 0.28, 0, kFullTurn);
    cairo_stroke(cr);
    strokeLine(cr, 0.11, {{0.64, 0.64}, {0.88, 0.88}});
}

void drawPlay(cairo_t* cr) {
    polygon(cr, {{0.22, 0.12}, {0.88, 0.5}, {0.22, 0.88}});
}

void drawPause(cairo_t* cr) {
    fillBar(cr, 0.22, 0.14, 0.2, 0.72);
    fillBar(cr, 0.58, 0.14, 0.2, 0.72);
}

void drawForward(cairo_t* cr) {
    polygon(cr, {{0.04, 0.2}, {0.5, 0.5}, {0.04, 0.8}});
    polygon(cr, {{0.5, 0.2}, {0.96, 0.5}, {0.5, 0.8}});
}

void drawBackward(cairo_t* cr) {
    polygon(cr, {{0.96, 0.2}, {0.5, 0.5}, {0.96, 0.8}});
    polygon(cr, {{0.5, 0.2}, {0.04, 0.5}, {0.5, 0.8}});
}

void drawWaveform(cairo_t* cr) {
    // Shown eight pixels wide: lines and gaps of one pixel each stay apart.
    constexpr double kLine = 1.0 / 8;
    constexpr std::array kHeights{3, 7, 5, 3};
    double x = kLine / 2;
    for (const int height : kHeights) {
        fillBar(cr, x - kLine / 2, (1 - height * kLine) / 2, kLine, height * kLine);
        x += 2 * kLine;
    }
}

struct Drawing {
    std::string_view name;
    void (*draw)(cairo_t*);
};

constexpr auto kDrawings = std::to_array<Drawing>({
    {"app.dashed", drawDashedApp},
    {"applelogo", drawApple},
    {"backward.fill", drawBackward},
    {"chevron.down", drawChevronDown},
    {"chevron.left", drawChevronLeft},
    {"chevron.right", drawChevronRight},
    {"chevron.up", drawChevronUp},
    {"circle.grid.3x3.fill", drawCircleGrid},
    {"forward.fill", drawForward},
    {"magnifyingglass", drawMagnifier},
    {"pause.fill", drawPause},
    {"play.fill", drawPlay},
    {"square.grid.3x3.fill", drawSquareGrid},
    {"waveform", drawWaveform},
    {"xmark.circle.fill", drawCloseCircle},
});

}  // namespace

std::shared_ptr<const XImage> drawSymbol(std::string_view name, double pointSize) {
    const auto isIt = [name](const Drawing& drawing) { return drawing.name == name; };
    const auto* drawing = std::find_if(kDrawings.begin(), kDrawings.end(), isIt);
    if (drawing == kDrawings.end() || !std::isfinite(pointSize)) return nullptr;
    const double points = std::clamp(pointSize, kSmallest, kLargest);
    const int pixels = int(std::ceil(points * kPixelsPerPoint));
    SurfacePtr surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pixels, pixels));
    cairo_t* cr = cairo_create(surface.get());
    cairo_scale(cr, pixels, pixels);
    cairo_set_source_rgba(cr, 0, 0, 0, 1);
    drawing->draw(cr);
    cairo_destroy(cr);
    cairo_surface_flush(surface.get());
    return std::make_shared<XImage>(std::move(surface), Size{points, points}, ImageKind::Template);
}

}  // namespace morvel::x11
