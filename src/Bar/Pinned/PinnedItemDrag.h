// How a pinned item is dragged: the type under which it gives its id on the pasteboard.
#pragma once

#include <optional>
#include <string>

#include "Pinned/PinnedItem.h"
#include "UI/Drag.h"
#include "Util/BundleIdentifier.h"

namespace morvel::PinnedItemDrag {

inline const std::string& type() {
    static const std::string kType = std::string(kBundleIdentifier) + ".pinned-app";
    return kType;
}

/// Whether it is a pinned item that is dragged, or something that says it is.
inline bool isIn(const ui::DragPasteboard& pasteboard) {
    return pasteboard.hasType(type());
}

inline ui::DragItem item(const PinnedItem& dragged) {
    return {type(), dragged.id()};
}

/// The id of the dragged item. Nothing when it is something else or cannot be read yet. Any program may use the type:
/// the item need not be pinned.
inline std::optional<std::string> itemID(const ui::DragPasteboard& pasteboard) {
    return pasteboard.string(type());
}

}  // namespace morvel::PinnedItemDrag
