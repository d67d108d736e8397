// Making images out of files and window properties.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>

#include "Platform/Linux/Icons/XImage.h"

namespace morvel::x11 {

/// The picture file scaled into a square of `size` pixels with its proportions kept; null when it cannot be decoded or
/// is unreasonably large. Which formats there are, SVG included, is up to the system's loaders.
std::shared_ptr<const XImage> loadImage(const std::string& path, int size);

/// One of the pictures of a _NET_WM_ICON property, which is a row of width, height and straight ARGB pixels each.
struct PropertyIcon {
    int width = 0, height = 0;
    std::span<const uint32_t> pixels;
};

/// The largest picture that is no larger than `size`, else the smallest of all. Pictures without extent, of absurd
/// extent or cut off by the end end the list. Nothing when there is none. `property` must outlive the answer.
std::optional<PropertyIcon> choosePropertyIcon(std::span<const uint32_t> property, int size);

std::shared_ptr<const XImage> makeImage(const PropertyIcon& icon);

/// `image` drawn into a new surface of this size in points; null for an image that has none.
std::shared_ptr<const XImage> scaled(const XImage& image, Size size);

/// Without any visible pixel.
std::shared_ptr<const XImage> emptyImage(Size size);

}  // namespace morvel::x11
