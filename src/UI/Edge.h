// The sides of a rectangle as one sees them on the screen.
#pragma once

namespace morvel::ui {

enum class Edge { Top, Bottom };

}  // namespace morvel::ui
