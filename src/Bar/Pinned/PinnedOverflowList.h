// What the overflow popover shows: the rows of the pinned items without a place on the bar, scrolled when they are
// many.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "Bar/Pinned/PinnedOverflowReorderStack.h"
#include "Bar/Pinned/PinnedOverflowRow.h"
#include "UI/ScrollView.h"
#include "Util/Lifetime.h"

namespace morvel {

/// Only the rows that can be seen exist, however many items there are.
class PinnedOverflowList : public ui::View {
public:
    static constexpr size_t kMaxRows = 12;

    using MakeRow = std::function<std::unique_ptr<PinnedOverflowRow>(const PinnedItem&)>;
    /// Of an item that was dropped before the one of this index among all other overflow items; whether it was taken.
    using Drop = std::function<bool(const PinnedItem&, size_t index)>;

    PinnedOverflowList(MainLoop& mainLoop, DraggedItem draggedItem, MakeRow makeRow, Drop onDrop);

    /// In a later turn, when the list wants another size than it has: a drag needs room in it, or no more.
    std::function<void()> onSizeChanged = [] {};

    void setItems(std::span<const PinnedItem> items);
    const std::vector<PinnedItem>& items() const { return items_; }
    void scrollToTop() { scrollView_.scrollTo(0); }
    void dragEnded() { stack_.draggingEnded(); }

    Size intrinsicSize() const override;

protected:
    void layout() override;

private:
    /// A part of the items, by the index of its first and the one behind its last.
    struct Range {
        size_t first = 0, end = 0;
        bool operator==(const Range&) const = default;
    };

    PinnedStackHooks hooks(DraggedItem draggedItem);
    Range visibleItems() const;
    void scrolled();
    void showRows(Range shown);
    bool dropped(const PinnedItem& item, size_t indexAmongShown);

    MainLoop& mainLoop_;
    MakeRow makeRow_;
    Drop onDrop_;
    std::vector<PinnedItem> items_;
    Range shown_;  // what has rows
    PinnedOverflowReorderStack stack_;
    ui::ScrollView scrollView_;
    std::vector<std::unique_ptr<PinnedOverflowRow>> rows_;
    Lifetime lifetime_;
};

}  // namespace morvel
