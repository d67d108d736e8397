// The outline of the small windows: a rounded rectangle, with an arrow towards what a popover belongs to.
#pragma once

#include <cairo.h>

#include <optional>
#include <vector>

#include "Platform/Linux/UI/Palette.h"
#include "Platform/Linux/UI/PixelRect.h"
#include "UI/Edge.h"

namespace morvel::x11 {

inline constexpr double kArrowHeight = 9;
inline constexpr double kArrowWidth = 20;

struct BubbleArrow {
    ui::Edge side = ui::Edge::Bottom;  ///< of the body, where the arrow grows out
    double tipX = 0;                   ///< in the window's pixels
};

/// `body` is in the window's pixels and leaves room for the arrow.
struct Bubble {
    PixelRect body;
    double radius = 0;
    std::optional<BubbleArrow> arrow = {};

    /// Fills the outline and draws its hairline inside it. Where the window is cut out by `coverage` instead of
    /// blended, the pixels on the outline are the hairline's alone.
    void paint(cairo_t* cr, const ui::RGBA& fill, const ui::RGBA& border, bool isBlended) const;
    /// From now on only what lies inside the body's hairline is painted.
    void clipToBody(cairo_t* cr) const;
    /// The pixels that the outline covers for the most part, as runs of rows: for windows that are cut out of their
    /// rectangle because nothing blends them.
    std::vector<PixelRect> coverage(int width, int height) const;

private:
    void addPath(cairo_t* cr, double inset) const;
};

}  // namespace morvel::x11
