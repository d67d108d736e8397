// Which of the pinned items stand on the bar, and which behind its overflow button.
#pragma once

#include <span>
#include <string_view>

#include "Pinned/PinnedItem.h"

namespace morvel::PinnedOverflowSlicing {

/// Both are parts of the list that was sliced, in its order, and good as long as that.
struct Result {
    std::span<const PinnedItem> visible;
    std::span<const PinnedItem> overflow;
    bool hasOverflow() const { return !overflow.empty(); }
};

/// A negative `maxVisible` counts as 0.
Result slice(std::span<const PinnedItem> items, int maxVisible);

// Where a dragged item comes to stand, in the list without it, when it is dropped before the item of this index among
// the others that are shown there. What is dropped on the bar stays on the bar, and among the overflow in the overflow:
// another one makes room.

int dropIndexOnBar(std::span<const PinnedItem> items, int maxVisible, std::string_view itemID, size_t index);
int dropIndexInOverflow(std::span<const PinnedItem> items, int maxVisible, std::string_view itemID, size_t index);

}  // namespace morvel::PinnedOverflowSlicing
