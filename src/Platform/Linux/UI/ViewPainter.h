// Paints a tree of views with Cairo.
#pragma once

#include <cairo.h>

#include "Platform/Linux/UI/Palette.h"
#include "Platform/Linux/UI/RoundedShapes.h"
#include "Platform/Linux/UI/TextLayouts.h"
#include "UI/ImageView.h"
#include "UI/Label.h"
#include "UI/TextField.h"
#include "UI/View.h"

namespace morvel::x11 {

/// Paints over what is there, only what touches one part of the window. Backgrounds, borders and pictures lie on whole
/// pixels, so edges are sharp however fractional the frames are.
class ViewPainter {
public:
    /// The context, in the window's pixels, and all else that is not copied outlive the painter.
    ViewPainter(cairo_t* cr, const PixelRect& part, const Palette& palette, TextLayouts& layouts, RoundedShapes& shapes,
                bool isComposited)
        : cr_(cr), part_(part), palette_(palette), layouts_(layouts), shapes_(shapes), isComposited_(isComposited) {}

    /// The view's corner lies at `corner`, in the window's pixels.
    void paint(const ui::View& view, Point<ViewSpace> corner) { paint(view, corner, 1); }

private:
    void paint(const ui::View& view, Point<ViewSpace> corner, double opacity);
    void paintSubviews(const ui::View& view, Point<ViewSpace> corner, double opacity);
    bool isInPartBelow(const ui::View& view, Point<ViewSpace> corner) const;
    void paintItself(const ui::View& view, Point<ViewSpace> corner, const PixelRect& pixels, double opacity);
    void paintBorder(const ui::View& view, const PixelRect& pixels, double opacity);
    void paintLabel(const ui::Label& label, Point<ViewSpace> corner, double opacity);
    void paintImage(const ui::ImageView& view, Point<ViewSpace> corner, const PixelRect& pixels, double opacity);
    void clipTo(const ui::View& view, const PixelRect& pixels);
    void paintTextField(const ui::TextField& field, const PixelRect& pixels, double opacity);
    void paintFieldText(const ui::TextField& field, const PixelRect& pixels, double opacity);
    void setSource(const ui::RGBA& color, double opacity);

    cairo_t* cr_;
    const PixelRect part_;
    const Palette& palette_;
    TextLayouts& layouts_;
    RoundedShapes& shapes_;
    const bool isComposited_;
};

}  // namespace morvel::x11
