#include "Pinned/PinnedOverflowSlicing.h"

#include <algorithm>

namespace morvel::PinnedOverflowSlicing {

namespace {

bool contains(std::span<const PinnedItem> items, std::string_view itemID) {
    return std::ranges::any_of(items, [itemID](const PinnedItem& item) { return item.isIdentifiedBy(itemID); });
}

}  // namespace

Result slice(std::span<const PinnedItem> items, int maxVisible) {
    const size_t visible = std::min(static_cast<size_t>(std::max(maxVisible, 0)), items.size());
    return {items.first(visible), items.subspan(visible)};
}

int dropIndexOnBar(std::span<const PinnedItem> items, int maxVisible, std::string_view itemID, size_t index) {
    const Result sliced = slice(items, maxVisible);
    if (contains(sliced.visible, itemID)) return static_cast<int>(std::min(index, sliced.visible.size() - 1));
    return std::min(static_cast<int>(std::min(index, items.size())), std::max(maxVisible - 1, 0));
}

int dropIndexInOverflow(std::span<const PinnedItem> items, int maxVisible, std::string_view itemID, size_t index) {
    const Result sliced = slice(items, maxVisible);
    const size_t visible = sliced.visible.size();
    const size_t others = contains(sliced.visible, itemID) ? visible - 1 : visible;
    return static_cast<int>(std::clamp(others + index, visible, std::max(visible, items.size())));
}

}  // namespace morvel::PinnedOverflowSlicing
