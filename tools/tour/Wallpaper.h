// A background for the embedded desktop, so that pictures of it are pleasant and the bar's translucency shows.
#pragma once

#include "harness/Connection.h"

namespace morvel::tour {

/// Paints the root window with a vertical gradient; stays until something else paints it.
void paintWallpaper(e2e::Connection& connection);

}  // namespace morvel::tour
