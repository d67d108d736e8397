// What painting keeps for one view while it is shown: where it was seen last, its shaped text, its scaled picture.
#pragma once

#include <cairo.h>

#include <memory>
#include <optional>
#include <string>

#include "Platform/Linux/Icons/XImage.h"
#include "Platform/Linux/UI/PixelRect.h"
#include "Platform/Linux/UI/TextLayouts.h"
#include "UI/ImageView.h"
#include "UI/Label.h"

namespace morvel::x11 {

struct DestroySurface {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using SurfacePtr = std::unique_ptr<cairo_surface_t, DestroySurface>;

class ViewNode : public ui::ViewPeer {
public:
    /// The part of the window in which the view was shown by the last frame; nothing when it was not to be seen.
    std::optional<PixelRect> shownIn;

    /// The label's text shaped for a width; shaped again only when text, font or width are others than last time.
    PangoLayout* layout(TextLayouts& layouts, const ui::Label& label, double width);

    /// The picture in exactly this many pixels. Owned by the node or the image.
    cairo_surface_t* scaled(const std::shared_ptr<const XImage>& image, int width, int height);

private:
    LayoutPtr layout_;
    std::string text_;  // as far as it can be shown
    ui::Font font_;
    double width_ = 0;
    std::shared_ptr<const XImage> image_;
    SurfacePtr scaled_;
    int scaledWidth_ = 0;
    int scaledHeight_ = 0;
};

/// The node that this host gave the view when it joined a window; null for a view that is not shown.
inline ViewNode* nodeOf(const ui::View& view) {
    return static_cast<ViewNode*>(view.peer());
}

}  // namespace morvel::x11
