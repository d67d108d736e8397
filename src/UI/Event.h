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

struct WheelEvent {
    /// In the space of the root view.
    Point<ViewSpace> location;
    /// How far the wheel was turned, positive towards the person (down). A touchpad sends parts of a notch.
    double notches = 0;
};

}  // namespace morvel::ui
