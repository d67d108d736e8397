// What the pointer did, as views are told it.
#pragma once

#include "Util/Geometry.h"

namespace morvel::ui {

enum class MouseButton { Left, Middle, Right };

struct MouseEvent {
    MouseButton button = MouseButton::Left;
    /// In the space of the root view, which is also the window's.
    Point<ViewSpace> location;
};

}  // namespace morvel::ui
