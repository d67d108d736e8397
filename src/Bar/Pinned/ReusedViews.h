// Keeps the views of pinned items that are shown still, with their hover and their drags.
#pragma once

#include <algorithm>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "Pinned/PinnedItem.h"

namespace morvel {

/// A view for each item in order: one of the former ones where it shows the very item, else one from `make`. The
/// others are destroyed.
template <class ItemView, class Make>
void reuseViews(std::vector<std::unique_ptr<ItemView>>& views, std::span<const PinnedItem> items, const Make& make) {
    std::vector<std::unique_ptr<ItemView>> former = std::exchange(views, {});
    for (const PinnedItem& item : items) {
        const auto found =
            std::ranges::find_if(former, [&](const auto& view) { return view && view->pinnedItem() == item; });
        views.push_back(found != former.end() ? std::move(*found) : make(item));
    }
}

}  // namespace morvel
