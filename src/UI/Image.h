// A picture that a host made and can draw. Immutable, shared.
#pragma once

#include <memory>

#include "Util/Geometry.h"

namespace morvel::ui {

class Image {
public:
    virtual ~Image() = default;
    /// In points.
    virtual Size size() const = 0;
};

/// Null stands for no image.
using ImageRef = std::shared_ptr<const Image>;

}  // namespace morvel::ui
