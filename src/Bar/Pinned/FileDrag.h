// Files dragged over a bar, which pins them where they are dropped.
#pragma once

#include "Bar/Drag/RunningWindowDrag.h"
#include "Bar/Pinned/PinnedItemDrag.h"
#include "UI/Drag.h"

namespace morvel::FileDrag {

/// What our own buttons are dragged as comes first, whatever else a drag says that it has.
inline bool isIn(const ui::DragPasteboard& pasteboard) {
    return pasteboard.hasFileURLs() && !PinnedItemDrag::isIn(pasteboard) && !RunningWindowDrag::isIn(pasteboard);
}

inline ui::DragOperation operation(const ui::DragPasteboard& pasteboard) {
    return isIn(pasteboard) ? ui::DragOperation::Copy : ui::DragOperation::None;
}

}  // namespace morvel::FileDrag
