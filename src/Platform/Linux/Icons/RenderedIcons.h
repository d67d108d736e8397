// Vector icons as small pictures in the person's cache folder, so that the renderer is loaded once per icon and not
// once per start.
#pragma once

#include <memory>
#include <string>

#include "Platform/Linux/Icons/XImage.h"

namespace morvel::x11 {

/// As `loadImage`, but a vector file is rendered only when the cache has no picture of this file as it is now. The SVG
/// renderer with what it drags in takes more memory than all the rest of this program, and keeps it until the end.
class RenderedIcons {
public:
    /// The folder is made when the first picture is kept. One that cannot be written means rendering each time.
    explicit RenderedIcons(std::string folder) : folder_(std::move(folder)) {}

    std::shared_ptr<const XImage> load(const std::string& path, int size) const;

    /// `morvel/icons` under XDG_CACHE_HOME, or under ~/.cache.
    static std::string defaultFolder();

private:
    const std::string folder_;
};

}  // namespace morvel::x11
