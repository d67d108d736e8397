// Shows a picture.
#pragma once

#include "UI/Image.h"
#include "UI/View.h"

namespace morvel::ui {

/// Fit: to the bounds, keeping the proportions. None: at the image's own size, centred.
enum class ImageScaling { Fit, None };

class ImageView : public View {
public:
    explicit ImageView(ImageScaling scaling = ImageScaling::Fit) : scaling_(scaling) {}

    Kind kind() const override { return Kind::Image; }

    const ImageRef& image() const { return image_; }
    void setImage(ImageRef image) {
        if (image_ == image) return;
        image_ = std::move(image);
        changed(ViewChange::Content);
    }

    /// The colour that a symbol image is drawn in; pictures keep their own colours.
    const Color& tint() const { return tint_; }
    void setTint(const Color& tint) {
        if (tint_ == tint) return;
        tint_ = tint;
        changed(ViewChange::Content);
    }

    ImageScaling scaling() const { return scaling_; }

private:
    const ImageScaling scaling_;
    ImageRef image_;
    Color tint_ = kLabelColor;
};

}  // namespace morvel::ui
