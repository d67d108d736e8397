// Which views of a tree mean something to a person who does not see them, and what they are called.
#pragma once

#include <string>
#include <vector>

#include "UI/View.h"

namespace morvel::x11 {

/// The views to tell about right below `view`: those with a role, a label or a text, through whatever merely arranges
/// them. What is hidden is left out, and so are a button's own texts, which its label says already.
std::vector<ui::View*> accessibleSubviews(const ui::View& view);

/// The accessibility label, else a label's text. Valid UTF-8 of bounded length, as the bus demands.
std::string accessibleName(const ui::View& view);

/// The tooltip, unless the name says the same. Valid UTF-8 of bounded length.
std::string accessibleDescription(const ui::View& view);

}  // namespace morvel::x11
