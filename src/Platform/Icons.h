// Images of applications, files and symbols.
#pragma once

#include <string>

#include "UI/Image.h"
#include "Util/Identity.h"

namespace morvel {

/// Main thread only. An image that cannot be had is null.
class Icons {
public:
    virtual ~Icons() = default;

    /// The icon of the installed application.
    virtual ui::ImageRef applicationIcon(const std::string& bundleID) = 0;
    /// The icon that the running process shows.
    virtual ui::ImageRef processIcon(ProcessID pid) = 0;
    virtual ui::ImageRef fileIcon(const std::string& path) = 0;
    /// A system symbol by its name in Apple's symbol set, drawn for `pointSize`; takes its tint from where it is shown.
    virtual ui::ImageRef symbol(const std::string& name, double pointSize) = 0;
    /// An empty image.
    virtual ui::ImageRef empty(Size size) = 0;

    /// The image drawn once, under the current appearance, into a new one of this size in points, so that showing it
    /// needs no further decoding.
    virtual ui::ImageRef baked(const ui::ImageRef& image, Size size) = 0;
};

}  // namespace morvel
