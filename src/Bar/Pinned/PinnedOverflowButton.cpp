#include "Bar/Pinned/PinnedOverflowButton.h"

#include <chrono>
#include <utility>

#include "Bar/Buttons/ButtonGeometry.h"
#include "Bar/Pinned/FileDrag.h"
#include "Bar/Pinned/PinnedItemDrag.h"
#include "Theme/ButtonAppearance.h"

namespace morvel {

namespace {

constexpr double kWidth = 24;
constexpr double kGlyphSize = 12;
constexpr Duration kHoverOpenDelay = std::chrono::milliseconds(600);
constexpr const char* kHelp = "Show more pinned items";

}  // namespace

PinnedOverflowButton::PinnedOverflowButton(ButtonServices services, MainLoop& mainLoop, MorvelEdge edge,
                                           PinnedOverflowButtonBindings bindings)
    : mainLoop_(mainLoop), bindings_(std::move(bindings)) {
    setCornerRadius(ButtonGeometry::kCornerRadius);
    setTooltip(kHelp);
    setAccessibilityLabel(kHelp);
    iconView_.setImage(services.icons.symbol(symbolName(edge), kGlyphSize));
    addSubview(iconView_);
    applyAppearance();
}

const char* PinnedOverflowButton::symbolName(MorvelEdge edge) {
    return edge == MorvelEdge::Bottom ? "chevron.up" : "chevron.down";
}

void PinnedOverflowButton::applyAppearance() {
    apply(appButtonAppearance(isHovered(), bindings_.bordersProvider()), *this);
}

Size PinnedOverflowButton::intrinsicSize() const {
    return {kWidth, ButtonGeometry::kHeight};
}

void PinnedOverflowButton::mouseUp(const ui::MouseEvent& event) {
    if (isReleasedInside(event)) accessibilityPress();
}

bool PinnedOverflowButton::accessibilityPress() {
    const auto click = bindings_.onClick;
    if (click) click();
    return static_cast<bool>(click);
}

bool PinnedOverflowButton::acceptsDrag(const ui::DragPasteboard& pasteboard) const {
    return PinnedItemDrag::isIn(pasteboard) || FileDrag::isIn(pasteboard);
}

ui::DragOperation PinnedOverflowButton::draggingEntered(const ui::DragInfo& info) {
    if (PinnedItemDrag::isIn(info.pasteboard)) {
        hoverOpenTimer_ = mainLoop_.after(kHoverOpenDelay, [this] {
            const auto open = bindings_.onHoverOpen;
            if (open) open();
        });
    }
    return draggingUpdated(info);
}

ui::DragOperation PinnedOverflowButton::draggingUpdated(const ui::DragInfo& info) {
    if (PinnedItemDrag::isIn(info.pasteboard)) return ui::DragOperation::Move;
    return FileDrag::operation(info.pasteboard);
}

bool PinnedOverflowButton::performDragOperation(const ui::DragInfo& info) {
    hoverOpenTimer_.reset();
    if (const auto itemID = PinnedItemDrag::itemID(info.pasteboard)) {
        const auto demote = bindings_.onDemote;
        return demote && demote(*itemID);
    }
    const auto drop = bindings_.onFileDrop;
    return FileDrag::isIn(info.pasteboard) && drop && drop(info);
}

void PinnedOverflowButton::layout() {
    iconView_.setFrame({(frame().width - kGlyphSize) / 2, (frame().height - kGlyphSize) / 2, kGlyphSize, kGlyphSize});
}

}  // namespace morvel
