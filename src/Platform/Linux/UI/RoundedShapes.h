// Rounded rectangles and their outlines, as nearly every view has them.
#pragma once

#include <cairo.h>

#include <map>

#include "Platform/Linux/Icons/XImage.h"
#include "Platform/Linux/UI/PixelRect.h"

namespace morvel::x11 {

/// Adds a closed path around the rectangle; the radius is bounded to what fits.
void addRoundedRect(cairo_t* cr, double x, double y, double width, double height, double radius);

/// Paints with the context's source. How much of each pixel a shape covers is kept by size, since working it out costs
/// ten times what painting does, and the buttons of a bar are of one size.
class RoundedShapes {
public:
    void fill(cairo_t* cr, const PixelRect& pixels, double radius);
    /// The line lies inside the rectangle.
    void outline(cairo_t* cr, const PixelRect& pixels, double radius, double lineWidth);

private:
    struct Shape {
        int width = 0;
        int height = 0;
        double radius = 0;
        double lineWidth = 0;  // 0: filled
        auto operator<=>(const Shape&) const = default;
    };

    static void paint(cairo_t* cr, double x, double y, const Shape& shape);
    void paint(cairo_t* cr, const PixelRect& pixels, const Shape& shape);

    std::map<Shape, SurfacePtr> masks_;
};

}  // namespace morvel::x11
