// The picture of what is dragged, under the pointer.
#pragma once

#include <memory>

#include "Platform/Linux/Icons/XImage.h"
#include "Platform/Linux/UI/ViewWindow.h"
#include "Platform/Linux/UI/XWindow.h"

namespace morvel::x11 {

/// Main thread only. Takes no input: what is below it is what the pointer is over.
class DragImageWindow {
public:
    /// Shows the view as it looks now, where it is. The context outlives it; window and view need not.
    DragImageWindow(ToolkitContext& context, ViewWindow& window, const ui::View& view);

    /// By how much the pointer has moved since the start, in root pixels.
    void moveBy(double dx, double dy);
    void hide() { window_->unmap(); }

private:
    PixelRect frame_;  // where it was at the start
    SurfacePtr surface_;
    std::unique_ptr<XWindow> window_;
    Subscription events_;
};

}  // namespace morvel::x11
