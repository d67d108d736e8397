// The appearance under which colours are resolved, and what they were resolved to.
#pragma once

#include <string>

#include "Platform/Mac/apple/AppKit/NSView.h"
#include "SystemObjects.h"

namespace morvel::mac::checked {

/// Changes the appearance of a window's or popover's content, and tells its views.
void setAppearance(const NSView& content, const std::string& name);

/// What -[NSColor CGColor] made, for example "labelColor 0.18 under NSAppearanceNameDarkAqua"; empty for none.
std::string describe(CGColorRef color);

}  // namespace morvel::mac::checked
