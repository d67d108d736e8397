// A picture of the macOS host: an AppKit image.
#pragma once

#include "Platform/Mac/apple/AppKit/NSControls.h"
#include "UI/Image.h"

namespace morvel::mac {

class MacImage : public ui::Image {
public:
    /// Null for an empty reference.
    static ui::ImageRef from(NSImage image) {
        return image ? std::make_shared<const MacImage>(std::move(image)) : nullptr;
    }
    explicit MacImage(NSImage image) : image_(std::move(image)) {}

    Size size() const override {
        const CGSize size = image_.size();
        return {size.width, size.height};
    }

    /// The image behind `image`, which this host made; empty for null.
    static NSImage imageOf(const ui::ImageRef& image) {
        return image ? static_cast<const MacImage&>(*image).image_ : NSImage();
    }

private:
    NSImage image_;
};

}  // namespace morvel::mac
