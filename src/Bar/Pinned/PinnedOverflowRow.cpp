#include "Bar/Pinned/PinnedOverflowRow.h"

#include <algorithm>
#include <utility>

#include "Bar/Buttons/ButtonGeometry.h"
#include "Theme/ButtonAppearance.h"

namespace morvel {

namespace {

constexpr double kInset = 8;  // before the icon, between icon and title, and after the title

}  // namespace

PinnedOverflowRow::PinnedOverflowRow(ButtonServices services, const PinnedItem& item, ProcessID process,
                                     PinnedItemActions actions)
    : PinnedItemView(services, item, process, std::move(actions)),
      titleLabel_(services.toolkit, ButtonGeometry::kTitleFont) {
    // From the cache: scrolling makes rows again and again.
    if (item.kind == PinnedItem::Kind::Folder) icon().showFile(item.identifier);
    titleLabel_.setText(item.displayName);
    addSubview(titleLabel_);
}

void PinnedOverflowRow::applyAppearance() {
    apply(rowAppearance(isHovered()), *this);
}

void PinnedOverflowRow::layout() {
    const double height = frame().height;
    const double iconSize = ButtonGeometry::kIconSize;
    icon().setFrame({kInset, (height - iconSize) / 2, iconSize, iconSize});
    const double labelX = icon().frame().maxX() + kInset;
    const double labelHeight = titleLabel_.intrinsicSize().height;
    titleLabel_.setFrame(
        {labelX, (height - labelHeight) / 2, std::max(0.0, frame().width - kInset - labelX), labelHeight});
}

}  // namespace morvel
