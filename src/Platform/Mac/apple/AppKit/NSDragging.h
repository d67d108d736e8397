// Drags as their source starts them and as their destination is told of them.
#pragma once

#include "Platform/Mac/apple/AppKit/NSControls.h"
#include "Platform/Mac/apple/AppKit/NSEvent.h"
#include "Platform/Mac/apple/AppKit/NSPasteboard.h"

namespace morvel::mac {

/// Bits: a source offers several.
inline constexpr NSUInteger NSDragOperationNone = 0;
inline constexpr NSUInteger NSDragOperationCopy = 1;
inline constexpr NSUInteger NSDragOperationMove = 16;
inline constexpr NSInteger NSDraggingContextWithinApplication = 1;

class NSDraggingItem : public NSObject {
public:
    static constexpr const char* kClass = "NSDraggingItem";
    using NSObject::NSObject;

    static NSDraggingItem make(const NSPasteboardItem& contents) {
        return create<NSDraggingItem>("initWithPasteboardWriter:"_sel, contents);
    }
    /// In the coordinates of the view that starts the drag.
    void setDraggingFrame(CGRect frame, const NSImage& image) const {
        send(*this, "setDraggingFrame:contents:"_sel, frame, image);
    }
};

class NSDraggingSession : public NSObject {
public:
    static constexpr const char* kClass = "NSDraggingSession";
    using NSObject::NSObject;
};

/// What a destination may ask about a drag; valid during the call that brought it. Its class is the system's secret.
class NSDraggingInfo : public Id {
public:
    using Id::Id;

    /// In the coordinates of the window under the pointer.
    CGPoint draggingLocation() const { return send<CGPoint>(*this, "draggingLocation"_sel); }
    NSPasteboard draggingPasteboard() const { return send<NSPasteboard>(*this, "draggingPasteboard"_sel); }
};

/// Starts a drag from a view that is in a window, with the press or drag of the mouse that is being handled.
inline NSDraggingSession beginDraggingSession(const NSView& view, const NSArray& items, const NSEvent& event,
                                              const Id& source) {
    return send<NSDraggingSession>(view, "beginDraggingSessionWithItems:event:source:"_sel, items, event, source);
}

}  // namespace morvel::mac
