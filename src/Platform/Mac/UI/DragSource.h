// Dragging a view of ours, as AppKit's dragging source.
#pragma once

#include <functional>

#include "Platform/Mac/apple/AppKit/NSEvent.h"
#include "Platform/Mac/apple/AppKit/NSView.h"
#include "UI/Drag.h"

namespace morvel::mac {

/// Starts to drag a picture of the view as it looks now. `event` is the press or drag of the left button that is being
/// handled. `ended` is called once, from AppKit, when the drag is over; never inside this call. False, and `ended` is
/// not kept, where no drag can start: the view is in no window, or there is no such event.
bool startDrag(const NSView& view, const ui::DragItem& item, const NSEvent& event,
               std::function<void(ui::DragOperation)> ended);

}  // namespace morvel::mac
