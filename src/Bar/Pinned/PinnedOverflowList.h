// What the overflow popover shows: as many rows as fit, and how far down among all of them these are.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "Bar/Pinned/PinnedOverflowReorderStack.h"
#include "Bar/Pinned/PinnedOverflowRow.h"
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
    void scrollToTop() { firstRow_ = 0; }
    void dragEnded() { stack_.draggingEnded(); }

    Size intrinsicSize() const override;

protected:
    void layout() override;

private:
    PinnedStackHooks hooks(DraggedItem draggedItem);
    /// Without that of something that is dragged here from elsewhere.
    size_t shownRows() const;
    size_t firstShown() const { return static_cast<size_t>(firstRow_); }
    void scrollBy(double rows);
    void showRows();
    bool dropped(const PinnedItem& item, size_t indexAmongShown);

    MainLoop& mainLoop_;
    MakeRow makeRow_;
    Drop onDrop_;
    std::vector<PinnedItem> items_;
    double firstRow_ = 0;  // may be between two rows while it is scrolled
    PinnedOverflowReorderStack stack_;
    ui::View scroller_;
    std::vector<std::unique_ptr<PinnedOverflowRow>> rows_;
    Lifetime lifetime_;
};

}  // namespace morvel
