// The neutral colours, fonts and rectangles as AppKit's.
#pragma once

#include "Platform/Mac/apple/AppKit/NSColor.h"
#include "Platform/Mac/apple/CGGeometry.h"
#include "UI/Color.h"
#include "UI/Font.h"
#include "Util/Geometry.h"

namespace morvel::mac {

/// A colour that may still follow the appearance. A role at an alpha is the role's colour with that alpha in place of
/// its own, as AppKit's own blends are; taking it fixes the appearance that is current at the time.
NSColor nsColor(const ui::Color& color);
NSFont nsFont(const ui::Font& font);

/// The numbers unchanged: both sides mean the same space.
template <class Space>
CGRect cgRect(const Rect<Space>& rect) {
    return {{rect.x, rect.y}, {rect.width, rect.height}};
}

}  // namespace morvel::mac
