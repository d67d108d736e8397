#include "Bar/CompactTop/CompactTopExpansionToggleButton.h"

#include <algorithm>
#include <utility>

namespace morvel {

namespace {

constexpr double kSymbolSize = 12;

}  // namespace

CompactTopExpansionToggleButton::CompactTopExpansionToggleButton(Icons& icons, std::function<void()> onToggle)
    : icons_(icons) {
    onClick = std::move(onToggle);
    imageView().setTint(ui::kSecondaryLabelColor);
    setExpanded(false);
}

void CompactTopExpansionToggleButton::setExpanded(bool expanded) {
    const char* const description = expanded ? "Collapse status icons" : "Expand status icons";
    imageView().setImage(icons_.symbol(expanded ? "chevron.left" : "chevron.right", kSymbolSize));
    setAccessibilityLabel(description);
    setTooltip(description);
}

void CompactTopExpansionToggleButton::layout() {
    const double side = std::min({kSymbolSize, bounds().width, bounds().height});
    imageView().setFrame({(bounds().width - side) / 2, (bounds().height - side) / 2, side, side});
}

}  // namespace morvel
