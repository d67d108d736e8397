#include "Bar/Pinned/PinnedAppButton.h"

#include <utility>

#include "Bar/Buttons/ButtonGeometry.h"
#include "Bar/Pinned/FileDrag.h"
#include "Theme/ButtonAppearance.h"

namespace morvel {

namespace {

constexpr double kIconSize = 22;
constexpr double kDotSize = 4;
constexpr double kDotBottom = 0.5;  // between the icon and the button's edge, touching neither

}  // namespace

PinnedAppButton::PinnedAppButton(ButtonServices services, const PinnedItem& item, ProcessID process,
                                 PinnedAppButtonBindings bindings)
    : PinnedItemView(services, item, process, bindings.actions), bindings_(std::move(bindings)) {
    if (item.kind == PinnedItem::Kind::Folder) icon().setImage(services.icons.fileIcon(item.identifier));
    setCornerRadius(ButtonGeometry::kCornerRadius);
    runningDot_.setCornerRadius(kDotSize / 2);
    addSubview(runningDot_);
    refreshAccent();
    applyAppearance();
}

void PinnedAppButton::setRunning(bool running) {
    if (std::exchange(isRunning_, running) != running) applyAppearance();
}

void PinnedAppButton::refreshAccent() {
    runningDot_.setBackground(bindings_.accentProvider());
}

void PinnedAppButton::applyAppearance() {
    runningDot_.setHidden(!showsRunningDot(pinnedItem().kind == PinnedItem::Kind::App, isRunning_));
    apply(appButtonAppearance(isHovered(), bindings_.bordersProvider()), *this);
}

Size PinnedAppButton::intrinsicSize() const {
    return {kWidth, ButtonGeometry::kHeight};
}

bool PinnedAppButton::acceptsDrag(const ui::DragPasteboard& pasteboard) const {
    return FileDrag::isIn(pasteboard);
}

ui::DragOperation PinnedAppButton::draggingEntered(const ui::DragInfo& info) {
    return FileDrag::operation(info.pasteboard);
}

bool PinnedAppButton::performDragOperation(const ui::DragInfo& info) {
    const auto drop = bindings_.onFileDrop;
    return drop && drop(info);
}

void PinnedAppButton::layout() {
    const double width = frame().width;
    const double height = frame().height;
    icon().setFrame({(width - kIconSize) / 2, (height - kIconSize) / 2, kIconSize, kIconSize});
    runningDot_.setFrame({(width - kDotSize) / 2, height - kDotBottom - kDotSize, kDotSize, kDotSize});
}

}  // namespace morvel
