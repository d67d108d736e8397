// A picture of the Linux host: a Cairo image surface that painting can use as it is.
#pragma once

#include <cairo.h>

#include <memory>
#include <utility>
#include <vector>

#include "UI/Image.h"

namespace morvel::x11 {

struct DestroySurface {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using SurfacePtr = std::unique_ptr<cairo_surface_t, DestroySurface>;

/// Whether an image is a mask that takes the tint of where it is shown; only its alpha counts then.
enum class ImageKind { Picture, Template };

/// The surface is premultiplied ARGB. It may have more pixels than the image has points, so painting scales by the
/// quotient of the two sizes.
class XImage : public ui::Image {
public:
    /// `surface` is an image surface without errors.
    XImage(SurfacePtr surface, Size points, ImageKind kind = ImageKind::Picture)
        : surface_(std::move(surface)), points_(points), kind_(kind) {}

    Size size() const override { return points_; }
    bool isTemplate() const { return kind_ == ImageKind::Template; }

    /// Owned by the image; for reading.
    cairo_surface_t* surface() const { return surface_.get(); }
    int pixelWidth() const { return cairo_image_surface_get_width(surface_.get()); }
    int pixelHeight() const { return cairo_image_surface_get_height(surface_.get()); }

    /// In exactly this many pixels; owned by the image, and good until the next question. All who show the image share
    /// what was made for its last few sizes. Main thread only.
    cairo_surface_t* scaled(int width, int height) const;

private:
    const SurfacePtr surface_;
    const Size points_;
    const ImageKind kind_;
    mutable std::vector<SurfacePtr> scaled_;  // the size asked for last is the last one
};

/// The image's pixels drawn into so many; null when there is not enough memory for it.
SurfacePtr scaledSurface(const XImage& image, int width, int height);

}  // namespace morvel::x11
