// A stack of pinned items, which are reordered in it and dropped into it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Bar/Drag/LiveReorderStackView.h"
#include "Pinned/PinnedItem.h"

namespace morvel {

/// What is dragged, as it is or would be pinned; nothing when that cannot be, or cannot be told yet.
using DraggedItem = std::function<std::optional<PinnedItem>(const ui::DragPasteboard&)>;

/// What the stack asks and tells. All are set.
struct PinnedStackHooks {
    DraggedItem draggedItem;
    /// The item's view in the stack; null when it has none.
    std::function<ui::View*(const std::string& itemID)> ownView;
    /// What stands here while an item without a view is dragged over the stack.
    std::function<std::unique_ptr<ui::View>(const PinnedItem&)> placeholder;
    /// Dropped before the item of this index among the other items here; whether it could be taken.
    std::function<bool(const PinnedItem&, size_t index)> onDrop;
};

/// The items may be preceded and followed by views that stay where they are.
class PinnedStackView : public LiveReorderStackView {
public:
    PinnedStackView(MainLoop& mainLoop, Axis axis, double spacing, PinnedStackHooks hooks);

    /// Arranges the views, the first `leading` and last `trailing` of which are no items.
    void arrange(const std::vector<ui::View*>& views, size_t leading, size_t trailing);
    /// Among all arranged views, the place at the point, in the space of the root. Items stand to both sides of it.
    size_t dropIndex(Point<ViewSpace> inRoot) const;

    bool acceptsDrag(const ui::DragPasteboard& pasteboard) const override;
    bool performDragOperation(const ui::DragInfo& info) override;
    ui::AccessibilityRole accessibilityRole() const override { return ui::AccessibilityRole::List; }

protected:
    std::vector<ui::View*> reorderableSubviews() const override;
    size_t firstReorderableIndex() const override { return leading_; }
    ui::View* resolveSource(const ui::DragPasteboard& pasteboard) override;
    std::unique_ptr<ui::View> resolveForeignSource(const ui::DragPasteboard& pasteboard) override;
    ui::View* currentSource() override { return draggedID_ ? hooks_.ownView(*draggedID_) : nullptr; }
    void sourceCleared() override { draggedID_.reset(); }

private:
    PinnedStackHooks hooks_;
    size_t leading_ = 0;
    size_t trailing_ = 0;
    std::optional<std::string> draggedID_;  // of the own view that is dragged
};

}  // namespace morvel
