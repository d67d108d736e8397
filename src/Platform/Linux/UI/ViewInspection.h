// A description of a tree of views for tests that look at a running bar from outside.
#pragma once

#include <string>

#include "Platform/Linux/Screens/RootGeometry.h"
#include "UI/View.h"

namespace morvel::x11 {

/// A JSON array with an object for each view, parents before their subviews: "label" (accessibility label, else a
/// label's text; of a text field its text or placeholder), "tooltip", "frame" [x, y, width, height] in the root
/// window's pixels, "hidden" (itself or with an ancestor) and "alpha" (its own times its ancestors'). The root view's
/// corner lies at `corner`.
std::string describeViews(const ui::View& root, Point<RootSpace> corner);

}  // namespace morvel::x11
