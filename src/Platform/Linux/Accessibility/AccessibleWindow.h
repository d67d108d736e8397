// A window of this program as assistive programs get to know it.
#pragma once

#include "Platform/Linux/Screens/RootGeometry.h"
#include "UI/View.h"

namespace morvel::x11 {

class AccessibleWindow {
public:
    /// Outlives the window's being told of.
    virtual ui::View& rootView() const = 0;
    /// Where a view of the window is, in the root window's pixels.
    virtual Rect<RootSpace> onRoot(const ui::View& view) const = 0;
    virtual Rect<RootSpace> frameOnRoot() const = 0;
    virtual bool isShown() const = 0;

protected:
    ~AccessibleWindow() = default;
};

}  // namespace morvel::x11
