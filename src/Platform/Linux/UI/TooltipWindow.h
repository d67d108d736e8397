// The one tooltip that is shown at a time, in a window of its own.
#pragma once

#include <memory>
#include <string>

#include "Platform/Linux/Icons/XImage.h"
#include "Platform/Linux/UI/ToolkitContext.h"
#include "Platform/Linux/UI/XWindow.h"

namespace morvel::x11 {

/// Main thread only.
class TooltipWindow {
public:
    /// The context outlives it.
    explicit TooltipWindow(ToolkitContext& context) : context_(context) {}

    /// Shows the text near the pointer, clear of `avoid`.
    void show(const std::string& text, Point<RootSpace> pointer, const Rect<RootSpace>& avoid);
    void hide();

private:
    ToolkitContext& context_;
    SurfacePtr surface_;
    std::unique_ptr<XWindow> window_;  // only while it is shown
    Subscription events_;
};

}  // namespace morvel::x11
