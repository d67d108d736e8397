// A window of controls as a person uses it.
#pragma once

#include <string>
#include <vector>

#include "Platform/Mac/apple/AppKit/NSView.h"

namespace morvel::mac::checked {

/// The views of the class or its subclasses that can be seen, in the order in which they were added.
std::vector<NSView> viewsOfClass(const NSView& root, const std::string& className);

/// From now on whoever is asked for a file or folder chooses this one, or nothing when it is empty.
void answerPanels(const std::string& path);

}  // namespace morvel::mac::checked
